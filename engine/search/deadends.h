// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"
#include "engine/search/searchstate.h"
#include "engine/search/searchtables.h"

#include <utility>
#include <vector>

namespace mirn::zelengine {

// Why a search cannot go on: the culprits are earlier choices without which it could, and the involved are those that
// have no placement together while the culprits stay. Both are sets of numbers; an unused one has no words.
struct SearchConflict
{
    BitSet culprits;
    BitSet involved;

    void add(const SearchConflict& other);
};

// Explains the dead ends of a search by its present state.
class DeadEnds final
{
public:
    // Both must outlive it.
    DeadEnds(const SearchTables& tables, const SearchState& state);

    [[nodiscard]] SearchConflict none() const;
    // Why the matching has too few sites, after ClassMatching::mend() has failed.
    [[nodiscard]] SearchConflict ofMatching() const;
    // Adds why classes that a sort may take while nothing is placed are not left to it.
    void explainMissing(int sort, const BitSet& missing, SearchConflict& conflict) const;

private:
    [[nodiscard]] std::vector<int> violators() const;
    void blameOccupants(int siteClass, SearchConflict& conflict) const;
    void blameUnit(int rule, int sort, int unit, SearchConflict& conflict) const;
    [[nodiscard]] bool isBlamedOnRules(int sort, int siteClass, SearchConflict& conflict) const;
    [[nodiscard]] std::vector<std::pair<int, Relation::Kind>> placedRelatives(int sort) const;

    const SearchTables& m_tables;
    const SearchState& m_state;
};

} // namespace mirn::zelengine
