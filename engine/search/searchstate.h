// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"
#include "engine/search/classmatching.h"
#include "engine/search/groupstates.h"
#include "engine/search/searchtables.h"

#include <cstddef>
#include <vector>

namespace mirn::zelengine {

// Where a search has placed resources, and what the rules leave to those that wait: forward checking. Those of one sort
// are placed in one order, and what was placed last is taken back first.
class SearchState final
{
public:
    // The resources with these numbers take part. The tables must outlive it.
    SearchState(const SearchTables& tables, const std::vector<int>& numbers);
    SearchState(const SearchState&) = delete;
    SearchState& operator=(const SearchState&) = delete;

    // Places a resource, which must be nextOf() its sort, in a class of its domain; takes from all other sorts the
    // classes that the rules do not leave them, and the class itself when it is full.
    void take(int number, int siteClass);
    void giveBack(int number);

    // The resources that wait, and -1 if none does.
    [[nodiscard]] int nextOf(int sort) const;
    [[nodiscard]] const std::vector<int>& waiting(int sort) const { return m_waiting[static_cast<std::size_t>(sort)]; }
    // The classes left to each of them.
    [[nodiscard]] const BitSet& domain(int sort) const { return m_domains[static_cast<std::size_t>(sort)]; }
    [[nodiscard]] int size(int sort) const { return m_sizes[static_cast<std::size_t>(sort)]; }

    [[nodiscard]] bool isPlaced(int number) const { return classOf(number) >= 0; }
    [[nodiscard]] int classOf(int number) const { return m_classes[static_cast<std::size_t>(number)]; }
    // The numbers of those in a class, and of those of a sort that are placed, in the order of their choice.
    [[nodiscard]] const std::vector<int>& occupants(int siteClass) const
    {
        return m_occupants[static_cast<std::size_t>(siteClass)];
    }
    [[nodiscard]] const std::vector<int>& placed(int sort) const { return m_placed[static_cast<std::size_t>(sort)]; }
    [[nodiscard]] std::size_t order(int number) const { return m_order[static_cast<std::size_t>(number)]; }

    [[nodiscard]] const GroupStates& groups() const { return m_groups; }
    [[nodiscard]] ClassMatching& matching() { return m_matching; }
    [[nodiscard]] const ClassMatching& matching() const { return m_matching; }
    [[nodiscard]] int freeSites(int siteClass) const;

private:
    struct Change
    {
        int sort;
        int word;
        quint64 before;
    };

    void removeFrom(int sort, int siteClass);
    void setWord(int sort, std::size_t word, quint64 after);
    void restrictRelated(int sort, int siteClass);
    void closeUnit(int rule, int unit);

    const SearchTables& m_tables;
    std::vector<BitSet> m_domains; // by sort, here and below
    std::vector<int> m_sizes; // of the domains
    std::vector<std::vector<int>> m_waiting; // the last comes next
    std::vector<std::vector<int>> m_placed;
    std::vector<int> m_classes; // by number
    std::vector<std::size_t> m_order; // by number: how many were placed before
    std::vector<std::vector<int>> m_occupants; // by class
    std::vector<std::vector<int>> m_concerned; // by group rule: sorts
    std::vector<Change> m_trail;
    std::vector<std::size_t> m_marks; // lengths of the trail, one for each that is placed
    GroupStates m_groups;
    ClassMatching m_matching;
};

} // namespace mirn::zelengine
