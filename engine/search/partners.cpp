// SPDX-License-Identifier: MIT
#include "engine/search/partners.h"

#include "engine/model/design.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr std::size_t MostPlacedPartners = 8;
constexpr std::size_t MostPartners = 16;

std::vector<int> joinedLists(std::vector<int> first, const std::vector<int>& second)
{
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

// Returns those of an ascending list that are nearest to a value and not the value itself, the nearest first.
std::vector<int> nearestIn(const std::vector<int>& list, int value, std::size_t most)
{
    std::vector<int> result;
    auto above = std::upper_bound(list.begin(), list.end(), value);
    auto below = std::make_reverse_iterator(std::lower_bound(list.begin(), list.end(), value));
    while (result.size() < most && (above != list.end() || below != list.rend())) {
        const bool isBelow = above == list.end() || (below != list.rend() && value - *below <= *above - value);
        result.push_back(isBelow ? *below++ : *above++);
    }
    return result;
}

} // namespace

Partners::Partners(const Design& design)
    : m_design(design)
{
    QHash<QString, std::vector<int>> supplies;
    for (int index : design.all()) {
        const Resource& resource = design.resource(index);
        if (resource.type == ResourceType::Uvccio && !resource.voltage.isEmpty())
            supplies[resource.voltage].push_back(index);
    }
    for (auto it = supplies.cbegin(); it != supplies.cend(); ++it)
        m_supplies.insert(it.key(), split(it.value()));
}

std::vector<int> Partners::of(int resource) const
{
    const Resource& self = m_design.resource(resource);
    const int ip = m_design.ipOf(resource);
    std::vector<int> result;
    if (self.type == ResourceType::DcuChannel && ip >= 0)
        result = some(partsOf(ip), resource);
    else if (self.type == ResourceType::ExtRef || self.type == ResourceType::Pll)
        result = some(split(ofClock(resource)), resource);
    else if (m_supplies.contains(self.voltage))
        result = some(*m_supplies.constFind(self.voltage), resource);
    return result.empty() ? some(siblings(self.parent), resource) : result;
}

std::vector<int> Partners::ofClock(int clock) const
{
    std::vector<int> result;
    for (int ip : m_design.fedBy(clock))
        result = joinedLists(std::move(result), m_design.partsOf(ip, ResourceType::DcuChannel));
    return result;
}

Partners::Candidates Partners::split(std::vector<int> resources) const
{
    std::sort(resources.begin(), resources.end());
    Candidates result;
    for (int resource : resources)
        (m_design.resource(resource).site >= 0 ? result.placed : result.others).push_back(resource);
    return result;
}

const Partners::Candidates& Partners::partsOf(int ip) const
{
    const auto known = m_parts.constFind(ip);
    if (known != m_parts.constEnd())
        return *known;
    return *m_parts.insert(
        ip, split(joinedLists(m_design.partsOf(ip, ResourceType::DcuChannel), m_design.clocksOf(ip))));
}

const Partners::Candidates& Partners::siblings(int parent) const
{
    const auto known = m_siblings.constFind(parent);
    if (known != m_siblings.constEnd())
        return *known;
    return *m_siblings.insert(parent, split(parent < 0 ? m_design.topLevel() : m_design.resource(parent).children));
}

// The nearest in the design's order, of the placed ones and of all others.
std::vector<int> Partners::some(const Candidates& candidates, int resource) const
{
    return joinedLists(nearestIn(candidates.placed, resource, MostPlacedPartners),
        nearestIn(candidates.others, resource, MostPartners - MostPlacedPartners));
}

} // namespace mirn::zelengine
