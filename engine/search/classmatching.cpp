// SPDX-License-Identifier: MIT
#include "engine/search/classmatching.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

std::size_t slot(int index)
{
    return static_cast<std::size_t>(index);
}

} // namespace

ClassMatching::ClassMatching(
    const SearchTables& tables, const std::vector<BitSet>& domains, const std::vector<int>& waiting)
    : m_tables(tables)
    , m_domains(domains)
    , m_shares(tables.classes().size())
    , m_members(tables.classes().size(), 0)
    , m_open(tables.sites().none())
    , m_spread(domains.size(), tables.sites().none())
    , m_loose(waiting)
    , m_steps(domains.size())
    , m_reachedSorts(static_cast<int>(domains.size()))
    , m_reachedClasses(tables.sites().none())
{
    for (const SiteClass& each : tables.classes())
        m_room.push_back(static_cast<int>(each.sites.size()));
    for (int sort = static_cast<int>(domains.size()) - 1; sort >= 0; --sort)
        m_looseSorts.push_back(sort);
    findPools(tables);
    for (std::size_t index = 0; index < m_room.size(); ++index)
        refreshClass(static_cast<int>(index));
}

// Of several rules for one type the strictest counts.
void ClassMatching::findPools(const SearchTables& tables)
{
    const std::vector<GroupRule>& rules = tables.rules();
    const int units = tables.sites().unitCount();
    m_poolClasses.resize(rules.size() * slot(units));
    m_poolMembers.resize(m_poolClasses.size(), 0);
    m_isPoolReached.resize(m_poolClasses.size(), 0);
    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
        for (int unit = 0; unit < units; ++unit)
            m_poolRoom.push_back(std::max(0, tables.mostIn(static_cast<int>(rule), unit)));
    }
    const auto strictest = [&rules](const ResourceType* type) {
        int result = -1;
        for (std::size_t rule = 0; rule < rules.size(); ++rule) {
            const bool counts = rules[rule].kind == GroupRule::Kind::AtMost && rules[rule].type == type;
            if (counts && (result < 0 || rules[rule].most < rules[slot(result)].most))
                result = static_cast<int>(rule);
        }
        return result;
    };
    for (const Sort& sort : tables.sorts())
        m_ruleOfSorts.push_back(strictest(sort.type));
    for (const SiteClass& each : tables.classes()) {
        int rule = -1;
        for (std::size_t index = 0; index < rules.size() && each.accepts.count() == 1; ++index) {
            if (each.accepts.contains(rules[index].type->number))
                rule = strictest(rules[index].type);
        }
        m_pools.push_back(rule >= 0 && tables.sites().isGroup(each.unit) ? rule * units + each.unit : -1);
        if (m_pools.back() >= 0)
            m_poolClasses[slot(m_pools.back())].push_back(static_cast<int>(m_pools.size()) - 1);
    }
}

int ClassMatching::poolOf(int sort, int siteClass) const
{
    const int rule = m_ruleOfSorts[slot(sort)];
    const int unit = m_tables.sites().at(siteClass).unit;
    return rule >= 0 && m_tables.sites().isGroup(unit) ? rule * m_tables.sites().unitCount() + unit : -1;
}

void ClassMatching::take(int sort, int siteClass)
{
    if (m_spread[slot(sort)].contains(siteClass))
        leave(sort, siteClass);
    else if (m_loose[slot(sort)] > 0)
        --m_loose[slot(sort)];
    else
        leave(sort, m_spread[slot(sort)].first());
    --m_room[slot(siteClass)];
    if (m_members[slot(siteClass)] > m_room[slot(siteClass)])
        evict(siteClass);
    refresh(siteClass);
    const int pool = poolOf(sort, siteClass);
    if (pool < 0)
        return;
    --m_poolRoom[slot(pool)];
    for (int each : m_poolClasses[slot(pool)]) {
        if (m_poolMembers[slot(pool)] > m_poolRoom[slot(pool)] && m_members[slot(each)] > 0)
            evict(each);
        refreshClass(each);
    }
}

void ClassMatching::giveBack(int sort, int siteClass)
{
    ++m_room[slot(siteClass)];
    const int pool = poolOf(sort, siteClass);
    if (pool >= 0)
        ++m_poolRoom[slot(pool)];
    enter(sort, siteClass);
    for (std::size_t index = 0; pool >= 0 && index < m_poolClasses[slot(pool)].size(); ++index)
        refreshClass(m_poolClasses[slot(pool)][index]);
}

void ClassMatching::lost(int sort, int siteClass)
{
    while (m_spread[slot(sort)].contains(siteClass))
        loosen(sort, siteClass);
}

void ClassMatching::shrank(int sort)
{
    BitSet gone = m_spread[slot(sort)];
    gone.subtract(m_domains[slot(sort)]);
    gone.forEach([&](int siteClass) { lost(sort, siteClass); });
}

bool ClassMatching::mend()
{
    while (!m_looseSorts.empty()) {
        const int sort = m_looseSorts.back();
        while (m_loose[slot(sort)] > 0) {
            if (!findPath(sort))
                return false; // it stays loose
        }
        m_looseSorts.pop_back();
    }
    return true;
}

// A breadth-first search, because a short path changes little.
bool ClassMatching::findPath(int start)
{
    m_reachedSorts = BitSet(static_cast<int>(m_domains.size()));
    m_reachedClasses = m_tables.sites().none();
    for (int pool : m_reachedPools)
        m_isPoolReached[slot(pool)] = 0;
    m_reachedPools.clear();
    m_reached.assign(1, start);
    m_reachedSorts.insert(start);
    for (std::size_t next = 0; next < m_reached.size(); ++next) {
        const int sort = m_reached[next];
        BitSet hits = m_domains[slot(sort)];
        hits.subtract(m_reachedClasses);
        const BitSet entered = hits;
        m_reachedClasses.add(entered);
        hits.intersect(m_open);
        if (!hits.isEmpty()) {
            m_steps[slot(start)] = {};
            followPath(sort, hits.first());
            return true;
        }
        entered.forEach([&](int siteClass) {
            if (isLimitedByPool(siteClass))
                reachPool(m_pools[slot(siteClass)], sort, siteClass);
            else
                reachMembers(siteClass, sort, siteClass);
        });
    }
    return false;
}

bool ClassMatching::isLimitedByPool(int siteClass) const
{
    const int pool = m_pools[slot(siteClass)];
    return pool >= 0 && (m_isPoolReached[slot(pool)] || m_members[slot(siteClass)] < m_room[slot(siteClass)]);
}

void ClassMatching::reachMembers(int left, int from, int entered)
{
    for (const Share& share : m_shares[slot(left)]) {
        if (m_reachedSorts.contains(share.sort))
            continue;
        m_reachedSorts.insert(share.sort);
        m_reached.push_back(share.sort);
        m_steps[slot(share.sort)] = {from, entered, left};
    }
}

void ClassMatching::reachPool(int pool, int from, int entered)
{
    if (m_isPoolReached[slot(pool)]) // as all its members were
        return;
    m_isPoolReached[slot(pool)] = 1;
    m_reachedPools.push_back(pool);
    for (int left : m_poolClasses[slot(pool)])
        reachMembers(left, from, entered);
}

int ClassMatching::capacity() const
{
    int result = 0;
    m_reachedClasses.forEach([&](int siteClass) {
        if (!isLimitedByPool(siteClass))
            result += m_room[slot(siteClass)];
    });
    for (int pool : m_reachedPools)
        result += m_poolRoom[slot(pool)];
    return result;
}

// Each sort on the path moves one resource to the class where it displaces one of the sort that comes next.
void ClassMatching::followPath(int sort, int siteClass)
{
    while (m_steps[slot(sort)].from >= 0) {
        const Step step = m_steps[slot(sort)];
        leave(sort, step.left);
        enter(sort, siteClass);
        siteClass = step.entered;
        sort = step.from;
    }
    --m_loose[slot(sort)];
    enter(sort, siteClass);
}

void ClassMatching::enter(int sort, int siteClass)
{
    std::vector<Share>& shares = m_shares[slot(siteClass)];
    const auto own
        = std::find_if(shares.begin(), shares.end(), [sort](const Share& each) { return each.sort == sort; });
    if (own != shares.end())
        ++own->count;
    else
        shares.push_back({sort, 1});
    m_spread[slot(sort)].insert(siteClass);
    changeMembers(siteClass, 1);
}

void ClassMatching::leave(int sort, int siteClass)
{
    std::vector<Share>& shares = m_shares[slot(siteClass)];
    const auto own
        = std::find_if(shares.begin(), shares.end(), [sort](const Share& each) { return each.sort == sort; });
    if (--own->count == 0) {
        *own = shares.back();
        shares.pop_back();
        m_spread[slot(sort)].remove(siteClass);
    }
    changeMembers(siteClass, -1);
}

void ClassMatching::loosen(int sort, int siteClass)
{
    leave(sort, siteClass);
    ++m_loose[slot(sort)];
    m_looseSorts.push_back(sort);
}

void ClassMatching::evict(int siteClass)
{
    loosen(m_shares[slot(siteClass)].back().sort, siteClass);
}

void ClassMatching::changeMembers(int siteClass, int difference)
{
    m_members[slot(siteClass)] += difference;
    if (m_pools[slot(siteClass)] >= 0)
        m_poolMembers[slot(m_pools[slot(siteClass)])] += difference;
    refresh(siteClass);
}

void ClassMatching::refresh(int siteClass)
{
    const int pool = m_pools[slot(siteClass)];
    if (pool < 0)
        return refreshClass(siteClass);
    for (int each : m_poolClasses[slot(pool)])
        refreshClass(each);
}

void ClassMatching::refreshClass(int siteClass)
{
    const int pool = m_pools[slot(siteClass)];
    const bool isOpen = m_members[slot(siteClass)] < m_room[slot(siteClass)]
        && (pool < 0 || m_poolMembers[slot(pool)] < m_poolRoom[slot(pool)]);
    if (isOpen)
        m_open.insert(siteClass);
    else
        m_open.remove(siteClass);
}

} // namespace mirn::zelengine
