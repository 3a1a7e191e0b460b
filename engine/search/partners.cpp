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
    QHash<Statement, std::vector<int>> stating;
    for (int index : design.all()) {
        const Resource& resource = design.resource(index);
        if (!resource.statement().isEmpty())
            stating[{resource.type, resource.statement()}].push_back(index);
    }
    for (auto it = stating.cbegin(); it != stating.cend(); ++it)
        m_stating.insert(it.key(), split(it.value()));
}

std::vector<int> Partners::of(int resource) const
{
    const Resource& self = m_design.resource(resource);
    std::vector<int> result;
    const int ip = m_design.ipOfPart(resource);
    if (m_design.hasLinks(resource) || self.isSource())
        result = some(split(connectedWith(resource)), resource);
    else if (ip >= 0)
        result = some(partsOf(ip), resource);
    const auto agreeing = m_stating.constFind({self.type, self.statement()});
    if (result.empty() && agreeing != m_stating.constEnd())
        result = some(*agreeing, resource);
    return result.empty() ? some(siblings(self.parent), resource) : result;
}

std::vector<int> Partners::connectedWith(int resource) const
{
    std::vector<int> result;
    for (const Link& link : m_design.linksOf(resource))
        result.push_back(link.other);
    const int ip = m_design.ipOfPart(resource);
    if (ip >= 0)
        result = joinedLists(joinedLists(std::move(result), m_design.partsOf(ip)), m_design.sourcesOf(ip));
    for (int fed : m_design.resource(resource).isSource() ? m_design.fedBy(resource) : std::vector<int>())
        result = joinedLists(std::move(result), m_design.partsOf(fed));
    return result;
}

Partners::Candidates Partners::split(std::vector<int> resources) const
{
    std::sort(resources.begin(), resources.end());
    resources.erase(std::unique(resources.begin(), resources.end()), resources.end());
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
    return *m_parts.insert(ip, split(joinedLists(m_design.partsOf(ip), m_design.sourcesOf(ip))));
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
