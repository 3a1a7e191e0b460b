// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"

#include <vector>

namespace mirn::zelengine {

class SearchState;
class SearchTables;

// Packs the channels of IPs into units. Each IP takes sites of one unit or of neighbouring ones, so that many of them
// are items of a bin packing problem.
//
// The order is best fit decreasing (Johnson, "Near-Optimal Bin Packing Algorithms", 1973): the IP with the most
// channels comes first, and goes where the fewest free sites remain. Sites that the IPs which still wait could not fill
// count most, as in the search for the least slack of a bin (Gupta and Ho, "A New Heuristic Algorithm for the
// One-Dimensional Bin-Packing Problem", 1999).
class UnitPacking final
{
public:
    // Both must outlive it.
    UnitPacking(const SearchTables& tables, const SearchState& state);

    // Returns the sort of an IP of which some channels are placed, else the one with the most channels that wait, each
    // counted by the weight of the sort; -1 if no channel of an IP waits.
    [[nodiscard]] int nextSort(const std::vector<double>& weights) const;

    // Returns those of the classes, which are not empty, that fit the next channel best.
    [[nodiscard]] BitSet bestFit(int sort, const BitSet& classes) const;

    // Returns resources that cannot be placed together because there are more IPs of so many channels than the units
    // that are connected by neighbours can hold, each connected part by itself; nothing if that proves nothing.
    [[nodiscard]] std::vector<int> tooMany() const;

private:
    struct Fit
    {
        int lost; // free sites of the unit that no others could fill
        int waste; // free sites that would remain, where the rest of the IP fits
        int openNeighbours; // those that come to lie apart are of little use
    };

    [[nodiscard]] std::vector<int> roomByUnit(const BitSet& classes) const;
    [[nodiscard]] Fit fitOf(int unit, int needed, const std::vector<int>& room, const std::vector<int>& filled) const;
    [[nodiscard]] std::vector<int> mostFilled(int sort) const;
    [[nodiscard]] BitSet within(const BitSet& classes, int unit) const;
    [[nodiscard]] int mostHeld(int channels, const std::vector<int>& parts) const;
    [[nodiscard]] std::vector<int> connectedParts() const;
    [[nodiscard]] std::vector<int> sortsFrom(int channels) const;

    const SearchTables& m_tables;
    const SearchState& m_state;
};

} // namespace mirn::zelengine
