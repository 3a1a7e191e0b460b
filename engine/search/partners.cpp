// SPDX-License-Identifier: MIT
#include "engine/search/partners.h"

#include "engine/model/design.h"

#include <algorithm>
#include <cstdlib>
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

} // namespace

Partners::Partners(const Design& design)
    : m_design(design)
{
    for (int index : design.all()) {
        const Resource& resource = design.resource(index);
        if (resource.type == ResourceType::Uvccio && !resource.voltage.isEmpty())
            m_supplies[resource.voltage].push_back(index);
    }
}

std::vector<int> Partners::of(int resource) const
{
    const Resource& self = m_design.resource(resource);
    const int ip = m_design.ipOf(resource);
    std::vector<int> candidates;
    if (self.type == ResourceType::DcuChannel && ip >= 0)
        candidates = joinedLists(m_design.partsOf(ip, ResourceType::DcuChannel), m_design.clocksOf(ip));
    else if (self.type == ResourceType::ExtRef || self.type == ResourceType::Pll)
        candidates = ofClock(resource);
    else if (self.type == ResourceType::Uvccio)
        candidates = m_supplies.value(self.voltage);
    candidates = some(candidates, resource);
    if (!candidates.empty())
        return candidates;
    return some(self.parent < 0 ? m_design.topLevel() : m_design.resource(self.parent).children, resource);
}

std::vector<int> Partners::ofClock(int clock) const
{
    std::vector<int> result;
    for (int ip : m_design.fedBy(clock))
        result = joinedLists(std::move(result), m_design.partsOf(ip, ResourceType::DcuChannel));
    return result;
}

// The nearest in the design's order, of the placed ones and of all others.
std::vector<int> Partners::some(const std::vector<int>& candidates, int resource) const
{
    std::vector<int> sorted;
    for (int candidate : candidates) {
        if (candidate != resource)
            sorted.push_back(candidate);
    }
    std::stable_sort(sorted.begin(), sorted.end(),
        [resource](int a, int b) { return std::abs(a - resource) < std::abs(b - resource); });
    std::vector<int> placed;
    std::vector<int> others;
    for (int candidate : sorted) {
        const bool isPlaced = m_design.resource(candidate).site >= 0;
        if (isPlaced && placed.size() < MostPlacedPartners)
            placed.push_back(candidate);
        else if (!isPlaced && others.size() < MostPartners - MostPlacedPartners)
            others.push_back(candidate);
    }
    return joinedLists(std::move(placed), others);
}

} // namespace mirn::zelengine
