// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/searchtables.h"

#include <vector>

namespace mirn::zelengine {

// What the group rules say of each unit while a search places resources: how many of those that a rule concerns are in
// the unit, and what their text is. What was placed before the search is in the tables.
class GroupStates final
{
public:
    // The tables must outlive it.
    explicit GroupStates(const SearchTables& tables);

    // A resource of a sort takes a site in a unit, or returns it. take() returns the numbers of the rules that leave
    // the unit to fewer resources from then on.
    std::vector<int> take(int sort, int unit);
    void giveBack(int sort, int unit);

    // Whether a rule, or every rule, leaves the unit to one more resource of a sort.
    [[nodiscard]] bool isOpen(int rule, int sort, int unit) const;
    [[nodiscard]] bool isOpen(int sort, int unit) const;

private:
    struct State
    {
        int count = 0;
        int label = -1; // of the text that all agree on
    };

    [[nodiscard]] bool isConcerned(int rule, int sort, int unit) const;
    [[nodiscard]] const State& state(int rule, int unit) const
    {
        return m_states[static_cast<std::size_t>(rule)][static_cast<std::size_t>(unit)];
    }
    [[nodiscard]] int ruleCount() const { return static_cast<int>(m_states.size()); }

    const SearchTables& m_tables;
    std::vector<std::vector<State>> m_states; // by rule and unit
};

} // namespace mirn::zelengine
