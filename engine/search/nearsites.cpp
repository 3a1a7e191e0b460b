// SPDX-License-Identifier: MIT
#include "engine/search/nearsites.h"

#include "engine/model/design.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr int MostRounds = 4;
constexpr double LeastGain = 1e-6; // scene units; less is rounding

double distanceBetween(const QPointF& a, const QPointF& b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y());
}

// Of no points there is no middle.
std::optional<QPointF> middleOf(const std::vector<QPointF>& points)
{
    QPointF sum;
    for (const QPointF& point : points)
        sum += point;
    return points.empty() ? std::nullopt : std::make_optional(sum / static_cast<double>(points.size()));
}

double sumOfDistances(const QPointF& point, const std::vector<QPointF>& origins)
{
    double sum = 0.0;
    for (const QPointF& origin : origins)
        sum += distanceBetween(point, origin);
    return sum;
}

double squareOfDistance(const QPointF& a, const QPointF& b)
{
    const QPointF way = a - b;
    return QPointF::dotProduct(way, way);
}

// The square of the distance from the middle of the origins beyond which no sum of distances to them is less than the
// cost: no such sum is less than the distance to their middle, once for each of them.
double squareOfReach(double cost, const std::vector<QPointF>& origins)
{
    const double reach = origins.empty() ? 0.0 : cost / static_cast<double>(origins.size());
    return reach * reach;
}

} // namespace

NearSites::NearSites(const SearchTables& tables, const Design& design, const QHash<int, QPointF>& points,
    const std::vector<std::vector<int>>& partners)
    : m_tables(tables)
    , m_places(tables.wanted().size())
    , m_partners(partners)
    , m_groups(tables)
    , m_hasPoints(!points.isEmpty())
{
    for (const SiteClass& each : tables.classes()) {
        m_seats.emplace_back();
        for (int site : each.sites)
            m_seats.back().push_back({site, points.value(site), points.contains(site), -1});
    }
    for (auto it = design.occupants().cbegin(); it != design.occupants().cend(); ++it) {
        if (points.contains(it.key()))
            m_points.insert(it.value(), points.value(it.key()));
    }
}

NearSites::Seat& NearSites::seatAt(const Place& place)
{
    return m_seats[static_cast<std::size_t>(place.siteClass)][static_cast<std::size_t>(place.seat)];
}

const NearSites::Seat& NearSites::seatAt(const Place& place) const
{
    return m_seats[static_cast<std::size_t>(place.siteClass)][static_cast<std::size_t>(place.seat)];
}

std::vector<QPointF> NearSites::partnerPoints(int wanted) const
{
    std::vector<QPointF> result;
    for (int partner : m_partners[static_cast<std::size_t>(wanted)]) {
        const auto point = m_points.constFind(partner);
        if (point != m_points.constEnd())
            result.push_back(*point);
    }
    return result;
}

// Returns the free site of a class that is nearest to the middle of the partners; without a middle the first free one.
NearSites::Offer NearSites::nearest(int siteClass, const std::optional<QPointF>& middle) const
{
    Offer best{{}, std::numeric_limits<double>::infinity()};
    const std::vector<Seat>& seats = m_seats[static_cast<std::size_t>(siteClass)];
    for (std::size_t index = 0; index < seats.size(); ++index) {
        const Seat& seat = seats[index];
        if (seat.occupant >= 0)
            continue;
        const double cost = !middle || !seat.hasPoint ? 0.0 : squareOfDistance(seat.point, *middle);
        if (cost < best.cost)
            best = {{siteClass, static_cast<int>(index)}, cost};
        if (cost == 0.0)
            break;
    }
    return best;
}

int NearSites::choose(int wanted, const BitSet& classes)
{
    const std::optional<QPointF> middle = middleOf(partnerPoints(wanted));
    if (!middle)
        return ClassChooser::choose(wanted, classes);
    Offer best{{}, std::numeric_limits<double>::infinity()};
    classes.forEach([&](int siteClass) {
        const Offer offer = nearest(siteClass, middle);
        if (offer.cost < best.cost)
            best = offer;
    });
    return best.place.siteClass;
}

void NearSites::take(int wanted, int siteClass)
{
    sit(wanted, nearest(siteClass, middleOf(partnerPoints(wanted))).place);
}

void NearSites::giveBack(int wanted)
{
    standUp(wanted);
}

void NearSites::sit(int wanted, const Place& place)
{
    Seat& seat = seatAt(place);
    seat.occupant = wanted;
    m_places[static_cast<std::size_t>(wanted)] = place;
    m_groups.take(m_tables.wanted(wanted).sort, m_tables.sites().at(place.siteClass).unit);
    if (seat.hasPoint)
        m_points.insert(m_tables.wanted(wanted).resource, seat.point);
}

void NearSites::standUp(int wanted)
{
    Place& place = m_places[static_cast<std::size_t>(wanted)];
    seatAt(place).occupant = -1;
    m_groups.giveBack(m_tables.wanted(wanted).sort, m_tables.sites().at(place.siteClass).unit);
    m_points.remove(m_tables.wanted(wanted).resource);
    place = {};
}

double NearSites::costOf(int wanted, const std::vector<QPointF>& origins) const
{
    const Seat& seat = seatAt(placeOf(wanted));
    return seat.hasPoint ? sumOfDistances(seat.point, origins) : 0.0;
}

void NearSites::improve(const std::function<bool()>& mayGoOn)
{
    bool hasGained = m_hasPoints;
    for (int round = 0; round < MostRounds && hasGained; ++round) {
        hasGained = false;
        for (int number = 0; number < static_cast<int>(m_places.size()); ++number) {
            if (placeOf(number).seat < 0)
                continue;
            if (!mayGoOn())
                return;
            hasGained = moveNearer(number) || hasGained;
            hasGained = swapNearer(number) || hasGained;
        }
    }
}

// What the rules for two resources leave.
BitSet NearSites::legalClasses(int wanted) const
{
    const int sort = m_tables.wanted(wanted).sort;
    BitSet result = m_tables.classesFor(wanted);
    for (const auto& [related, kind] : m_tables.sort(sort).related) {
        for (int member : m_tables.sort(related).members) {
            if (member != wanted && placeOf(member).seat >= 0)
                result.intersect(m_tables.classesBeside(placeOf(member).siteClass, Relation::reversed(kind)));
        }
    }
    return result;
}

bool NearSites::moveNearer(int wanted)
{
    const std::vector<QPointF> origins = partnerPoints(wanted);
    if (origins.empty() || !seatAt(placeOf(wanted)).hasPoint)
        return false;
    const QPointF middle = *middleOf(origins);
    Offer best{{}, costOf(wanted, origins) - LeastGain};
    double reach = squareOfReach(best.cost, origins);
    const int sort = m_tables.wanted(wanted).sort;
    const int unit = m_tables.sites().at(placeOf(wanted).siteClass).unit;
    m_groups.giveBack(sort, unit); // it does not stand in its own way
    legalClasses(wanted).forEach([&](int siteClass) {
        const std::vector<Seat>& seats = m_seats[static_cast<std::size_t>(siteClass)];
        for (std::size_t index = 0; index < seats.size(); ++index) {
            const Seat& seat = seats[index];
            if (seat.occupant >= 0 || !seat.hasPoint || squareOfDistance(seat.point, middle) >= reach)
                continue;
            const double cost = sumOfDistances(seat.point, origins);
            if (cost >= best.cost)
                continue;
            if (!m_groups.isOpen(sort, m_tables.sites().at(siteClass).unit))
                return;
            best = {{siteClass, static_cast<int>(index)}, cost};
            reach = squareOfReach(cost, origins);
        }
    });
    m_groups.take(sort, unit);
    if (best.place.seat < 0)
        return false;
    standUp(wanted);
    sit(wanted, best.place);
    return true;
}

// Within a class no rule minds a swap.
bool NearSites::swapNearer(int wanted)
{
    const std::vector<QPointF> origins = partnerPoints(wanted);
    const QPointF middle = middleOf(origins).value_or(QPointF());
    const double own = costOf(wanted, origins);
    const double reach = squareOfReach(own, origins);
    for (const Seat& seat : m_seats[static_cast<std::size_t>(placeOf(wanted).siteClass)]) {
        const int other = seat.occupant;
        if (other < 0 || other == wanted || !seat.hasPoint || squareOfDistance(seat.point, middle) >= reach)
            continue;
        const double before = own + costOf(other);
        swap(wanted, other);
        if (costOf(wanted) + costOf(other) < before - LeastGain)
            return true;
        swap(wanted, other);
    }
    return false;
}

void NearSites::swap(int wanted, int other)
{
    const Place place = placeOf(wanted);
    const Place otherPlace = placeOf(other);
    standUp(wanted);
    standUp(other);
    sit(wanted, otherPlace);
    sit(other, place);
}

std::vector<Placement> NearSites::placements() const
{
    std::vector<Placement> result;
    for (std::size_t number = 0; number < m_places.size(); ++number) {
        if (m_places[number].seat >= 0)
            result.push_back({m_tables.wanted()[number].resource, seatAt(m_places[number]).site});
    }
    return result;
}

} // namespace mirn::zelengine
