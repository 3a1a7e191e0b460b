// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"
#include "engine/search/grouprule.h"

#include <QHash>
#include <QPointF>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>
#include <vector>

namespace mirn::zelengine {

class SearchTables;

// What a search for places has found out.
struct PlacementAnswer
{
    enum class Kind {
        Placed, // all wanted resources have a place
        Impossible, // proven: there is no such placement
        NotFound, // in the time given; there may be one
        Cancelled,
    };

    Kind kind = Kind::Placed;
    // Legal one after the other, in any order. Unless the answer is Placed, this is a plan for a part of the resources;
    // empty if the search was cancelled.
    std::vector<Placement> placements;
    std::vector<int> missing; // the wanted resources that the placements leave out
    std::vector<int> conflict; // if it is impossible: wanted resources that have no placement together
    std::vector<int> reasons; // placed resources that the rules name as reasons against them
    QString sentence; // for users, without capital and full stop; empty if all were placed
};

// Finds a legal placement of resources without moving what is placed, near to what each is connected with. Nothing
// changes; it works on copies, so that it may run in a thread of its own.
//
// Free sites that no rule tells apart are one class. A ClassSearch finds a class for each resource or proves that there
// is none, a ConflictReader says why, and NearSites chooses the sites.
class PlacementSearch final
{
public:
    using Position = std::function<std::optional<QPointF>(int site)>; // by site id, in any unit

    // `position` is asked now and not later; without it no place is nearer than another.
    PlacementSearch(const Device& device, const Design& design, const SettingStore& settings, const Position& position);
    PlacementSearch(const PlacementSearch&) = delete;
    PlacementSearch& operator=(const PlacementSearch&) = delete;

    // The unplaced resources that have sites of their own, in the order of the design: all of them, or those among
    // these resources and what is below them.
    [[nodiscard]] std::vector<int> unplaced() const;
    [[nodiscard]] std::vector<int> unplacedBelow(const std::vector<int>& tops) const;

    struct Limits
    {
        std::chrono::milliseconds time{10000};
        std::function<bool()> isCancelled; // may be empty
        std::function<void(int placed, int wanted)> progress; // may be empty; called now and then
    };

    // Each of the resources must be one of unplaced().
    [[nodiscard]] PlacementAnswer run(const std::vector<int>& resources, const Limits& limits) const;

    // Returns the placements of those resources that are in the design and unplaced now, after a search during which
    // others may have changed it.
    [[nodiscard]] static std::vector<Placement> ofUnplaced(
        const Design& design, const std::vector<Placement>& placements);

private:
    class Clock;

    [[nodiscard]] std::vector<int> placeable(const std::vector<int>& candidates) const;
    [[nodiscard]] PlacementAnswer search(const SearchTables& tables, Clock& clock) const;
    [[nodiscard]] std::vector<std::vector<int>> partnersOf(const SearchTables& tables) const;
    void explain(const SearchTables& tables, const std::vector<int>& core, Clock& clock, PlacementAnswer& answer) const;

    const Device m_device;
    const Design m_design;
    SettingStore m_settings; // of the device above
    QHash<int, QPointF> m_points; // by site id
    const std::vector<GroupRule> m_groupRules;
};

} // namespace mirn::zelengine
