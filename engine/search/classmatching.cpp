// SPDX-License-Identifier: MIT
#include "engine/search/classmatching.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

ClassMatching::ClassMatching(
    std::vector<int> sitesOfClasses, const std::vector<BitSet>& domains, const std::vector<int>& resources)
    : m_room(std::move(sitesOfClasses))
    , m_domains(domains)
    , m_classes(domains.size(), -1)
    , m_members(m_room.size())
    , m_isWaiting(domains.size(), 0)
    , m_loose(resources.rbegin(), resources.rend()) // the first is the last here
    , m_reachedFrom(m_room.size(), -1)
{
    for (int resource : resources)
        m_isWaiting[static_cast<std::size_t>(resource)] = 1;
}

void ClassMatching::take(int resource, int siteClass)
{
    leave(resource);
    m_isWaiting[static_cast<std::size_t>(resource)] = 0;
    const int room = --m_room[static_cast<std::size_t>(siteClass)];
    const std::vector<int>& members = m_members[static_cast<std::size_t>(siteClass)];
    if (static_cast<int>(members.size()) <= room)
        return;
    m_loose.push_back(members.back());
    leave(members.back());
}

void ClassMatching::giveBack(int resource, int siteClass)
{
    ++m_room[static_cast<std::size_t>(siteClass)];
    m_isWaiting[static_cast<std::size_t>(resource)] = 1;
    enter(resource, siteClass);
}

void ClassMatching::shrank(int resource)
{
    const int present = m_classes[static_cast<std::size_t>(resource)];
    if (present < 0 || m_domains[static_cast<std::size_t>(resource)].contains(present))
        return;
    leave(resource);
    m_loose.push_back(resource);
}

bool ClassMatching::mend()
{
    while (!m_loose.empty()) {
        const int resource = m_loose.back();
        const auto index = static_cast<std::size_t>(resource);
        if (m_isWaiting[index] && m_classes[index] < 0 && !findPath(resource))
            return false; // it stays loose
        m_loose.pop_back();
    }
    return true;
}

// A breadth-first search, because a short path changes little.
bool ClassMatching::findPath(int start)
{
    BitSet open(static_cast<int>(m_room.size())); // the classes not reached yet that the present resource may take
    BitSet reached(static_cast<int>(m_room.size()));
    m_reached.assign(1, start);
    for (std::size_t next = 0; next < m_reached.size(); ++next) {
        const int resource = m_reached[next];
        open = m_domains[static_cast<std::size_t>(resource)];
        open.subtract(reached);
        reached.add(open);
        for (int siteClass : open.values()) {
            const auto index = static_cast<std::size_t>(siteClass);
            m_reachedFrom[index] = resource;
            if (static_cast<int>(m_members[index].size()) < m_room[index]) {
                followPath(start, siteClass);
                return true;
            }
            m_reached.insert(m_reached.end(), m_members[index].begin(), m_members[index].end());
        }
    }
    return false;
}

// Every resource on the path moves to the class that was reached from it.
void ClassMatching::followPath(int start, int siteClass)
{
    int target = siteClass;
    int resource = -1;
    while (resource != start) {
        resource = m_reachedFrom[static_cast<std::size_t>(target)];
        const int before = m_classes[static_cast<std::size_t>(resource)];
        leave(resource);
        enter(resource, target);
        target = before;
    }
}

void ClassMatching::enter(int resource, int siteClass)
{
    m_classes[static_cast<std::size_t>(resource)] = siteClass;
    m_members[static_cast<std::size_t>(siteClass)].push_back(resource);
}

void ClassMatching::leave(int resource)
{
    int& present = m_classes[static_cast<std::size_t>(resource)];
    if (present < 0)
        return;
    std::vector<int>& members = m_members[static_cast<std::size_t>(present)];
    *std::find(members.begin(), members.end(), resource) = members.back();
    members.pop_back();
    present = -1;
}

} // namespace mirn::zelengine
