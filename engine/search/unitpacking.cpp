// SPDX-License-Identifier: MIT
#include "engine/search/unitpacking.h"

#include "engine/search/searchstate.h"
#include "engine/search/searchtables.h"

#include <algorithm>
#include <limits>
#include <set>
#include <tuple>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr int MostLeftInUnit = 32; // sites for which it is found out whether they could be filled

std::size_t spot(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

UnitPacking::UnitPacking(const SearchTables& tables, const SearchState& state)
    : m_tables(tables)
    , m_state(state)
{ }

int UnitPacking::nextSort(const std::vector<double>& weights) const
{
    int best = -1;
    double most = 0.0;
    for (int sort = 0; sort < static_cast<int>(m_tables.sorts().size()); ++sort) {
        const std::size_t waiting = m_state.waiting(sort).size();
        if (waiting == 0 || !m_tables.isTogether(sort))
            continue;
        if (!m_state.placed(sort).empty())
            return sort;
        const double measure = static_cast<double>(waiting) * weights[spot(sort)];
        if (measure > most) {
            best = sort;
            most = measure;
        }
    }
    return best;
}

// A unit that was begun is filled first.
BitSet UnitPacking::bestFit(int sort, const BitSet& classes) const
{
    if (!m_tables.isTogether(sort))
        return classes;
    const std::vector<int> room = roomByUnit(classes);
    if (!m_state.placed(sort).empty()) {
        const int begun = m_tables.sites().at(m_state.classOf(m_state.placed(sort).back())).unit;
        if (room[spot(begun)] > 0)
            return within(classes, begun);
    }
    const auto isLess = [](const Fit& a, const Fit& b) {
        return std::tie(a.lost, a.waste, a.openNeighbours) < std::tie(b.lost, b.waste, b.openNeighbours);
    };
    const int needed = static_cast<int>(m_state.waiting(sort).size());
    const std::vector<int> filled = mostFilled(sort);
    Fit best{std::numeric_limits<int>::max(), 0, 0};
    BitSet result = classes;
    classes.forEach([&](int siteClass) {
        const Fit fit = fitOf(m_tables.sites().at(siteClass).unit, needed, room, filled);
        if (isLess(best, fit))
            return;
        if (isLess(fit, best))
            result = m_tables.sites().none();
        best = fit;
        result.insert(siteClass);
    });
    return result;
}

std::vector<int> UnitPacking::roomByUnit(const BitSet& classes) const
{
    std::vector<int> result(spot(m_tables.sites().unitCount()), 0);
    classes.forEach(
        [&](int siteClass) { result[spot(m_tables.sites().at(siteClass).unit)] += m_state.freeSites(siteClass); });
    return result;
}

// What is left when the unit is filled, and then the neighbour that has the fewest sites for the rest. Others may reach
// what is left from a neighbour, so that it is lost only without one.
UnitPacking::Fit UnitPacking::fitOf(
    int unit, int needed, const std::vector<int>& room, const std::vector<int>& filled) const
{
    const int rest = needed - room[spot(unit)];
    Fit result{0, rest <= 0 ? -rest : std::numeric_limits<int>::max(), 0};
    for (int neighbour : m_tables.sites().neighbours(unit)) {
        const int beside = room[spot(neighbour)];
        if (beside <= 0 || neighbour == unit)
            continue;
        ++result.openNeighbours;
        if (rest > 0 && beside >= rest)
            result.waste = std::min(result.waste, beside - rest);
    }
    if (result.openNeighbours == 0 && result.waste <= MostLeftInUnit)
        result.lost = result.waste - filled[spot(result.waste)];
    return result;
}

// By number of sites: how many of them the other IPs that wait can fill at most.
std::vector<int> UnitPacking::mostFilled(int sort) const
{
    std::vector<int> counts(MostLeftInUnit + 1, 0); // IPs, by channels
    for (int other : sortsFrom(1)) {
        if (other != sort && m_state.waiting(other).size() <= MostLeftInUnit)
            ++counts[m_state.waiting(other).size()];
    }
    std::vector<int> result(MostLeftInUnit + 1, 0);
    for (int channels = 1; channels <= MostLeftInUnit; ++channels) {
        for (int n = std::min(counts[spot(channels)], MostLeftInUnit / channels); n > 0; --n) {
            for (int sites = MostLeftInUnit; sites >= channels; --sites)
                result[spot(sites)] = std::max(result[spot(sites)], result[spot(sites - channels)] + channels);
        }
    }
    return result;
}

BitSet UnitPacking::within(const BitSet& classes, int unit) const
{
    BitSet result = m_tables.sites().none();
    for (int siteClass : m_tables.sites().classesOf(unit)) {
        if (classes.contains(siteClass))
            result.insert(siteClass);
    }
    return result;
}

// The same count for each number of channels that an IP has: so many fit into a part once for each full lot of sites.
std::vector<int> UnitPacking::tooMany() const
{
    std::set<int> counts;
    for (int sort : sortsFrom(1))
        counts.insert(static_cast<int>(m_state.waiting(sort).size()));
    const std::vector<int> parts = counts.empty() ? std::vector<int>() : connectedParts();
    std::vector<int> result;
    for (int channels : counts) {
        const std::vector<int> sorts = sortsFrom(channels);
        const auto tooMany = spot(mostHeld(channels, parts)) + 1;
        for (std::size_t index = 0; sorts.size() >= tooMany && index < tooMany; ++index) {
            const std::vector<int>& waiting = m_state.waiting(sorts[index]);
            result.insert(result.end(), waiting.rbegin(), waiting.rbegin() + channels);
        }
        if (!result.empty())
            break;
    }
    std::sort(result.begin(), result.end());
    return result;
}

// The sorts of IPs of which at least so many channels wait.
std::vector<int> UnitPacking::sortsFrom(int channels) const
{
    std::vector<int> result;
    for (int sort = 0; sort < static_cast<int>(m_tables.sorts().size()); ++sort) {
        if (static_cast<int>(m_state.waiting(sort).size()) >= channels && m_tables.isTogether(sort))
            result.push_back(sort);
    }
    return result;
}

int UnitPacking::mostHeld(int channels, const std::vector<int>& parts) const
{
    BitSet classes = m_tables.sites().none();
    for (int sort : sortsFrom(channels))
        classes.add(m_state.domain(sort));
    std::vector<int> room(parts.size(), 0);
    classes.forEach([&](int siteClass) {
        room[spot(parts[spot(m_tables.sites().at(siteClass).unit)])] += m_state.freeSites(siteClass);
    });
    int result = 0;
    for (int sites : room)
        result += sites / channels;
    return result;
}

// By unit: the first unit of those that are connected with it.
std::vector<int> UnitPacking::connectedParts() const
{
    std::vector<int> result(spot(m_tables.sites().unitCount()), -1);
    for (int start = 0; start < m_tables.sites().unitCount(); ++start) {
        if (result[spot(start)] >= 0)
            continue;
        result[spot(start)] = start;
        std::vector<int> open{start};
        while (!open.empty()) {
            const int unit = open.back();
            open.pop_back();
            for (int neighbour : m_tables.sites().neighbours(unit)) {
                if (std::exchange(result[spot(neighbour)], start) < 0)
                    open.push_back(neighbour);
            }
        }
    }
    return result;
}

} // namespace mirn::zelengine
