// SPDX-License-Identifier: MIT
#include "engine/search/deadends.h"

#include <algorithm>

namespace mirn::zelengine {

void SearchConflict::add(const SearchConflict& other)
{
    if (culprits.words().empty()) {
        *this = other;
        return;
    }
    culprits.add(other.culprits);
    involved.add(other.involved);
}

DeadEnds::DeadEnds(const SearchTables& tables, const SearchState& state)
    : m_tables(tables)
    , m_state(state)
{ }

SearchConflict DeadEnds::none() const
{
    const BitSet empty(static_cast<int>(m_tables.wanted().size()));
    return {empty, empty};
}

// One more than there are sites: any so many of those that were reached have too few.
std::vector<int> DeadEnds::violators() const
{
    std::vector<int> result;
    const auto most = static_cast<std::size_t>(m_state.matching().capacity()) + 1;
    for (int sort : m_state.matching().reachedSorts()) {
        const std::vector<int>& waiting = m_state.waiting(sort);
        for (auto number = waiting.rbegin(); number != waiting.rend() && result.size() < most; ++number)
            result.push_back(*number);
    }
    return result;
}

// The violators have too few sites between them: because of those that occupy sites of the classes left to them, and of
// those that have taken other classes from one of them.
SearchConflict DeadEnds::ofMatching() const
{
    SearchConflict conflict = none();
    BitSet left = m_tables.sites().none();
    std::vector<int> sorts;
    for (int violator : violators()) {
        conflict.involved.insert(violator);
        const int sort = m_tables.wanted(violator).sort;
        if (!sorts.empty() && sorts.back() == sort)
            continue;
        sorts.push_back(sort);
        left.add(m_state.domain(sort));
    }
    left.forEach([&](int siteClass) {
        const bool isPool = m_state.matching().isLimitedByPool(siteClass);
        const int unit = m_tables.sites().at(siteClass).unit;
        for (int each : isPool ? m_tables.sites().classesOf(unit) : std::vector<int>{siteClass})
            blameOccupants(each, conflict);
    });
    for (int sort : sorts) {
        BitSet missing = m_tables.sort(sort).room;
        missing.subtract(left);
        explainMissing(sort, missing, conflict);
    }
    return conflict;
}

// Blames those that were placed first, so that the search goes back far.
void DeadEnds::explainMissing(int sort, const BitSet& allMissing, SearchConflict& conflict) const
{
    BitSet missing = allMissing;
    for (const auto& [related, kind] : placedRelatives(sort)) {
        if (missing.isEmpty())
            return;
        BitSet taken = missing;
        taken.subtract(m_tables.classesBeside(m_state.classOf(related), kind));
        if (taken.isEmpty())
            continue;
        conflict.culprits.insert(related);
        missing.subtract(taken);
    }
    missing.forEach([&](int siteClass) {
        if (!isBlamedOnRules(sort, siteClass, conflict))
            blameOccupants(siteClass, conflict);
    });
}

bool DeadEnds::isBlamedOnRules(int sort, int siteClass, SearchConflict& conflict) const
{
    const int unit = m_tables.sites().at(siteClass).unit;
    for (int rule = 0; rule < static_cast<int>(m_tables.rules().size()); ++rule) {
        if (m_state.groups().isOpen(rule, sort, unit))
            continue;
        blameUnit(rule, sort, unit, conflict);
        return true;
    }
    return false;
}

// All that a rule AtMost counts, or the first of those with another text.
void DeadEnds::blameUnit(int rule, int sort, int unit, SearchConflict& conflict) const
{
    const auto labelOf = [&](int other) { return m_tables.sort(other).labels[static_cast<std::size_t>(rule)]; };
    const bool counts = m_tables.rules()[static_cast<std::size_t>(rule)].kind == GroupRule::Kind::AtMost;
    int first = -1;
    for (int siteClass : m_tables.sites().classesOf(unit)) {
        for (int occupant : m_state.occupants(siteClass)) {
            const int label = labelOf(m_tables.wanted(occupant).sort);
            if (label < 0 || (!counts && label == labelOf(sort)))
                continue;
            if (counts)
                conflict.culprits.insert(occupant);
            else if (first < 0 || m_state.order(occupant) < m_state.order(first))
                first = occupant;
        }
    }
    if (first >= 0)
        conflict.culprits.insert(first);
}

void DeadEnds::blameOccupants(int siteClass, SearchConflict& conflict) const
{
    for (int occupant : m_state.occupants(siteClass))
        conflict.culprits.insert(occupant);
}

// With the rules as they have them.
std::vector<std::pair<int, Relation::Kind>> DeadEnds::placedRelatives(int sort) const
{
    std::vector<std::pair<int, Relation::Kind>> result;
    for (const auto& [related, kind] : m_tables.sort(sort).related) {
        for (int placed : m_state.placed(related))
            result.emplace_back(placed, Relation::reversed(kind));
    }
    std::sort(result.begin(), result.end(),
        [this](const auto& a, const auto& b) { return m_state.order(a.first) < m_state.order(b.first); });
    return result;
}

} // namespace mirn::zelengine
