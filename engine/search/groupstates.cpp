// SPDX-License-Identifier: MIT
#include "engine/search/groupstates.h"

namespace mirn::zelengine {

GroupStates::GroupStates(const SearchTables& tables)
    : m_tables(tables)
    , m_states(tables.rules().size(), std::vector<State>(static_cast<std::size_t>(tables.sites().unitCount())))
{ }

bool GroupStates::isConcerned(int rule, int sort, int unit) const
{
    return m_tables.sort(sort).labels[static_cast<std::size_t>(rule)] >= 0 && m_tables.sites().isGroup(unit);
}

std::vector<int> GroupStates::take(int sort, int unit)
{
    std::vector<int> closing;
    for (int rule = 0; rule < ruleCount(); ++rule) {
        if (!isConcerned(rule, sort, unit))
            continue;
        State& present = m_states[static_cast<std::size_t>(rule)][static_cast<std::size_t>(unit)];
        present.label = m_tables.sort(sort).labels[static_cast<std::size_t>(rule)];
        ++present.count;
        const bool counts = m_tables.rules()[static_cast<std::size_t>(rule)].kind == GroupRule::Kind::AtMost;
        if (present.count == (counts ? m_tables.mostIn(rule, unit) : 1))
            closing.push_back(rule);
    }
    return closing;
}

void GroupStates::giveBack(int sort, int unit)
{
    for (int rule = 0; rule < ruleCount(); ++rule) {
        if (isConcerned(rule, sort, unit))
            --m_states[static_cast<std::size_t>(rule)][static_cast<std::size_t>(unit)].count;
    }
}

bool GroupStates::isOpen(int rule, int sort, int unit) const
{
    if (!isConcerned(rule, sort, unit))
        return true;
    const State& present = state(rule, unit);
    if (m_tables.rules()[static_cast<std::size_t>(rule)].kind == GroupRule::Kind::AtMost)
        return present.count < m_tables.mostIn(rule, unit);
    return present.count == 0 || present.label == m_tables.sort(sort).labels[static_cast<std::size_t>(rule)];
}

bool GroupStates::isOpen(int sort, int unit) const
{
    for (int rule = 0; rule < ruleCount(); ++rule) {
        if (!isOpen(rule, sort, unit))
            return false;
    }
    return true;
}

} // namespace mirn::zelengine
