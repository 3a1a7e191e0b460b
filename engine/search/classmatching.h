// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"

#include <vector>

namespace mirn::zelengine {

// Whether all resources that have no class yet can have one each at the same time, if a class takes no more than it has
// sites and no other rule counts. It keeps a largest matching and mends it by augmenting paths (Ford and Fulkerson,
// "Flows in Networks", 1962; Kuhn, "The Hungarian Method for the Assignment Problem", 1955). Where no path is left,
// the resources that were reached have fewer sites between them than they are: by Hall's theorem ("On Representatives
// of Subsets", 1935) that proves that there is no placement.
class ClassMatching final
{
public:
    // `domains` are the classes that each resource may take; they may change and must outlive the matching. Only the
    // resources named take part.
    ClassMatching(
        std::vector<int> sitesOfClasses, const std::vector<BitSet>& domains, const std::vector<int>& resources);

    // A resource takes a site of a class for good, or returns it.
    void take(int resource, int siteClass);
    void giveBack(int resource, int siteClass);
    // Its domain has lost classes.
    void shrank(int resource);
    [[nodiscard]] bool hasRoom(int siteClass) const { return m_room[static_cast<std::size_t>(siteClass)] > 0; }

    // Mends the matching. Returns false if there is none; violators() are then resources that have too few sites.
    [[nodiscard]] bool mend();
    [[nodiscard]] const std::vector<int>& violators() const { return m_reached; }

private:
    [[nodiscard]] bool findPath(int resource);
    void followPath(int start, int siteClass);
    void enter(int resource, int siteClass);
    void leave(int resource);

    std::vector<int> m_room; // free sites by class
    const std::vector<BitSet>& m_domains;
    std::vector<int> m_classes; // by resource; -1 if none
    std::vector<std::vector<int>> m_members; // by class
    std::vector<char> m_isWaiting; // by resource: whether it takes part and has no site for good
    std::vector<int> m_loose; // those that may have no class; some are named in vain
    std::vector<int> m_reached; // by the last search for a path, in the order of the search
    std::vector<int> m_reachedFrom; // by class, the resource
};

} // namespace mirn::zelengine
