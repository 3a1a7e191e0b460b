// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/classsearch.h"
#include "engine/search/groupstates.h"
#include "engine/search/searchtables.h"

#include <QHash>
#include <QPointF>

#include <functional>
#include <optional>
#include <vector>

namespace mirn::zelengine {

class Design;

// Keeps the places near to each other: offers a search the class with the site nearest to the middle of the resource's
// placed partners first, takes that site, and in the end moves and swaps resources while that shortens the sum of the
// distances between partners. A site without a point is as near as any other.
class NearSites final : public ClassChooser
{
public:
    // The points are by site id; the partners are resources, by number. Tables and partners must outlive it.
    NearSites(const SearchTables& tables, const Design& design, const QHash<int, QPointF>& points,
        const std::vector<std::vector<int>>& partners);

    [[nodiscard]] int choose(int wanted, const BitSet& classes) override;
    void take(int wanted, int siteClass) override;
    void giveBack(int wanted) override;

    // Moves and swaps in rounds until nothing is gained or `mayGoOn` says no. The rules are kept.
    void improve(const std::function<bool()>& mayGoOn);

    [[nodiscard]] std::vector<Placement> placements() const;

private:
    struct Seat // a free site
    {
        int site = -1; // id
        QPointF point;
        bool hasPoint = false;
        int occupant = -1; // number of a wanted resource
    };
    struct Place
    {
        int siteClass = -1;
        int seat = -1;
    };
    struct Offer
    {
        Place place;
        double cost = 0.0;
    };

    [[nodiscard]] std::vector<QPointF> partnerPoints(int wanted) const;
    [[nodiscard]] Offer nearest(int siteClass, const std::optional<QPointF>& middle) const;
    [[nodiscard]] double costOf(int wanted, const std::vector<QPointF>& origins) const;
    [[nodiscard]] double costOf(int wanted) const { return costOf(wanted, partnerPoints(wanted)); }
    [[nodiscard]] BitSet legalClasses(int wanted) const;
    bool moveNearer(int wanted);
    bool swapNearer(int wanted);
    void swap(int wanted, int other);
    void sit(int wanted, const Place& place);
    void standUp(int wanted);
    [[nodiscard]] Seat& seatAt(const Place& place);
    [[nodiscard]] const Seat& seatAt(const Place& place) const;
    [[nodiscard]] const Place& placeOf(int wanted) const { return m_places[static_cast<std::size_t>(wanted)]; }

    const SearchTables& m_tables;
    std::vector<std::vector<Seat>> m_seats; // by class
    std::vector<Place> m_places; // by number
    const std::vector<std::vector<int>>& m_partners;
    GroupStates m_groups;
    QHash<int, QPointF> m_points; // of placed resources
    const bool m_hasPoints;
};

} // namespace mirn::zelengine
