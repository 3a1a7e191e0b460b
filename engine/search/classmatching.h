// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/searchtables.h"

#include <vector>

namespace mirn::zelengine {

// Whether all resources that have no class yet can have one each at the same time, if a class takes no more than it has
// sites, a unit no more of one type than a rule allows, and no other rule counts. It keeps a largest matching of sorts
// and classes and mends it by augmenting paths (Ford and Fulkerson, "Flows in Networks", 1962; Kuhn, "The Hungarian
// Method for the Assignment Problem", 1955). Where no path is left, the sorts that were reached have fewer sites
// between them than they have resources: by Hall's theorem ("On Representatives of Subsets", 1935) that proves that
// there is no placement.
//
// A pool is what a rule AtMost leaves of one unit. It counts for the classes of which the sites take no other type;
// leaving it out elsewhere makes the proof weaker and never wrong.
class ClassMatching final
{
public:
    // `domains` are the classes that each sort may take; they may change and must outlive the matching, as the tables
    // must. `waiting` says how many resources of each sort take part.
    ClassMatching(const SearchTables& tables, const std::vector<BitSet>& domains, const std::vector<int>& waiting);

    // One resource of a sort takes a site of a class for good, or returns it.
    void take(int sort, int siteClass);
    void giveBack(int sort, int siteClass);
    // The domain of a sort has lost one class, or some.
    void lost(int sort, int siteClass);
    void shrank(int sort);
    [[nodiscard]] bool hasRoom(int siteClass) const { return m_room[static_cast<std::size_t>(siteClass)] > 0; }

    // Mends the matching. Returns false if there is none; the reached sorts have then more resources than capacity().
    [[nodiscard]] bool mend();
    [[nodiscard]] const std::vector<int>& reachedSorts() const { return m_reached; }
    [[nodiscard]] int capacity() const;
    // Whether the capacity of this class is that of its pool.
    [[nodiscard]] bool isLimitedByPool(int siteClass) const;

private:
    struct Share
    {
        int sort;
        int count;
    };
    struct Step // how a sort was reached
    {
        int from = -1; // the sort that displaces it
        int entered = -1; // the class that the other one enters
        int left = -1; // the class that one of this sort leaves
    };

    void findPools(const SearchTables& tables);
    [[nodiscard]] int poolOf(int sort, int siteClass) const;
    [[nodiscard]] bool findPath(int sort);
    void reachMembers(int left, int from, int entered);
    void reachPool(int pool, int from, int entered);
    void followPath(int sort, int siteClass);
    void enter(int sort, int siteClass);
    void leave(int sort, int siteClass);
    void loosen(int sort, int siteClass);
    void evict(int siteClass);
    void changeMembers(int siteClass, int difference);
    void refresh(int siteClass);
    void refreshClass(int siteClass);

    const SearchTables& m_tables;
    const std::vector<BitSet>& m_domains;
    std::vector<int> m_room; // free sites by class
    std::vector<std::vector<Share>> m_shares; // by class
    std::vector<int> m_members; // by class, their sum
    std::vector<int> m_pools; // by class; -1 if none
    std::vector<int> m_ruleOfSorts; // the rule whose pools count for a sort; -1 if none
    std::vector<int> m_poolRoom;
    std::vector<int> m_poolMembers;
    std::vector<std::vector<int>> m_poolClasses;
    BitSet m_open; // the classes that can take one more
    std::vector<BitSet> m_spread; // by sort: the classes with members of it
    std::vector<int> m_loose; // by sort: resources without a class
    std::vector<int> m_looseSorts; // some are named in vain
    std::vector<int> m_reached; // by the last search for a path, in the order of the search; here and below
    std::vector<Step> m_steps; // by sort
    BitSet m_reachedSorts;
    BitSet m_reachedClasses;
    std::vector<int> m_reachedPools;
    std::vector<char> m_isPoolReached;
};

} // namespace mirn::zelengine
