// SPDX-License-Identifier: MIT
#pragma once

#include "planning/siteplaces.h"
#include "platform/contract/zelplanengine.h"

#include <QByteArray>
#include <QHash>
#include <QPointF>
#include <QSet>
#include <QString>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace mirn::zelchipview {

class SiteAreas;

// A connection as a line on the drawing.
struct PlanLine
{
    using Kind = zelconnection::Kind;

    QPointF from; // scene coordinates
    QPointF to;
    int connection = -1; // index into the list that it was made from
    Kind kind = Kind::Feeds;
    bool isBroken = false;
    bool isStub = false; // it leads from the placed end towards the nearest site that would take the other one
    int fromLayer = 0; // those that the ends are on, which may be hidden
    int toLayer = 0;

    [[nodiscard]] bool operator==(const PlanLine& other) const;
};

// With more lines than these no stubs are made: they could not be told apart, and finding them takes long.
constexpr std::size_t MostLinesWithStubs = 400;

// Turns connections into lines. An unplaced end is somewhere among the sites that would take it: each takes the nearest
// one to the placed end that no other unplaced one has taken. Without such a site, or without a placed end, there is no
// line. Only the first 256 unplaced resources are asked about, because each answer goes through all sites.
class PlanLines final
{
public:
    // Returns the ids of the elements on which a resource may be placed.
    using Candidates = std::function<std::vector<int>(const std::string& resource)>;

    PlanLines(SiteAreas& areas, Candidates candidates); // the areas are not owned

    [[nodiscard]] std::vector<PlanLine> linesOf(const std::vector<zelconnection>& connections);

private:
    [[nodiscard]] std::optional<SitePlace> nearestFor(const std::string& resource, const QPointF& from);
    [[nodiscard]] std::optional<SitePlace> nearestFree(const std::string& resource, const QPointF& from);

    SiteAreas& m_areas;
    const Candidates m_candidates;
    QHash<QByteArray, std::optional<SitePlace>> m_places; // of the unplaced resources that were asked about
    QSet<int> m_taken; // the sites of these places
};

// Returns what a line says: the names, what they are to each other, the length in scene units, and a broken rule.
[[nodiscard]] QString describe(const PlanLine& line, const zelconnection& connection);

} // namespace mirn::zelchipview
