// SPDX-License-Identifier: MIT
#include "engine/model/design.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

// The list must be in ascending order and contain the value.
void erase(std::vector<int>& list, int value)
{
    list.erase(std::lower_bound(list.begin(), list.end(), value));
}

} // namespace

Design::Design(QString rootName)
    : m_name(std::move(rootName))
{ }

int Design::add(int parent, Resource resource)
{
    resource.parent = parent;
    resource.path = (parent < 0 ? m_name : at(parent).path) + QLatin1Char('/') + resource.name;
    if (m_byPath.contains(resource.path))
        return -1;
    const int index = static_cast<int>(m_resources.size());
    m_byPath.insert(resource.path, index);
    (parent < 0 ? m_topLevel : at(parent).children).push_back(index);
    const int site = std::exchange(resource.site, -1);
    m_resources.push_back(std::move(resource));
    if (site >= 0)
        setSite(index, site);
    return index;
}

void Design::addFeed(int source, int ip)
{
    at(source).feeds.push_back(ip);
    std::vector<int>& feeders = m_feeders[ip];
    const auto place = std::lower_bound(feeders.begin(), feeders.end(), source);
    if (place == feeders.end() || *place != source)
        feeders.insert(place, source);
}

void Design::addLink(int from, int to, Link::Rule rule)
{
    m_links[from].push_back({to, rule, true});
    m_links[to].push_back({from, rule, false});
}

void Design::remove(int resource)
{
    erase(siblings(resource), resource);
    for (int index : subtree(resource)) {
        if (at(index).fixed && at(index).site >= 0)
            m_fixedSites.insert(index, at(index).site);
        setSite(index, -1);
        setLocked(index, false);
        m_configured.remove(index);
        at(index).isRemoved = true;
        m_byPath.remove(at(index).path);
    }
    m_removed.insert(at(resource).path, resource);
}

void Design::restore(int resource)
{
    m_removed.remove(at(resource).path);
    std::vector<int>& list = siblings(resource);
    // Resources are numbered in the order of the file, so this is the old position.
    list.insert(std::lower_bound(list.begin(), list.end(), resource), resource);
    for (int index : subtree(resource)) {
        at(index).isRemoved = false;
        m_byPath.insert(at(index).path, index);
        setSite(index, restoredSite(index));
    }
}

std::vector<int>& Design::siblings(int resource)
{
    const int parent = at(resource).parent;
    return parent < 0 ? m_topLevel : at(parent).children;
}

std::vector<int> Design::all() const
{
    std::vector<int> result;
    result.reserve(static_cast<std::size_t>(m_byPath.size()));
    std::vector<int> pending(m_topLevel.rbegin(), m_topLevel.rend());
    while (!pending.empty()) {
        const int index = pending.back();
        pending.pop_back();
        result.push_back(index);
        pending.insert(pending.end(), resource(index).children.rbegin(), resource(index).children.rend());
    }
    return result;
}

std::vector<int> Design::subtree(int top) const
{
    std::vector<int> result;
    std::vector<int> pending{top};
    while (!pending.empty()) {
        const int index = pending.back();
        pending.pop_back();
        result.push_back(index);
        pending.insert(pending.end(), resource(index).children.rbegin(), resource(index).children.rend());
    }
    return result;
}

void Design::setSite(int index, int site)
{
    Resource& changed = at(index);
    if (changed.site >= 0)
        m_occupants.remove(changed.site);
    changed.site = site;
    if (site >= 0)
        m_occupants.insert(site, index);
}

QString Design::parameter(int index, const QString& key) const
{
    const auto configured = m_configured.constFind(index);
    if (configured != m_configured.constEnd() && configured->contains(key))
        return configured->value(key);
    return originalParameter(index, key);
}

QString Design::originalParameter(int index, const QString& key) const
{
    const ResourceType* type = resource(index).type;
    const ResourceParameter* known = type ? type->parameter(key) : nullptr;
    return resource(index).parameters.value(key, known ? known->preset : QString());
}

void Design::setParameter(int index, const QString& key, const QString& value)
{
    if (value != originalParameter(index, key)) {
        m_configured[index].insert(key, value);
        return;
    }
    const auto configured = m_configured.find(index);
    if (configured == m_configured.end())
        return;
    configured->remove(key);
    if (configured->isEmpty())
        m_configured.erase(configured);
}

int Design::ipOf(int index) const
{
    int above = resource(index).parent;
    while (above >= 0 && !resource(above).isIp())
        above = resource(above).parent;
    return above;
}

int Design::ipOfPart(int index) const
{
    const int ip = ipOf(index);
    return ip >= 0 && resource(ip).type->parts == resource(index).type ? ip : -1;
}

// What is below an IP, without what is below an IP inside it.
template <typename Predicate> std::vector<int> Design::ownOf(int ip, const Predicate& isWanted) const
{
    std::vector<int> result;
    std::vector<int> pending{ip};
    while (!pending.empty()) {
        const int index = pending.back();
        pending.pop_back();
        if (index != ip && isWanted(resource(index)))
            result.push_back(index);
        if (index == ip || !resource(index).isIp())
            pending.insert(pending.end(), resource(index).children.rbegin(), resource(index).children.rend());
    }
    return result;
}

std::vector<int> Design::partsOf(int ip) const
{
    const ResourceType* part = resource(ip).type->parts;
    return ownOf(ip, [part](const Resource& each) { return each.type == part; });
}

std::vector<int> Design::fedBy(int source) const
{
    std::vector<int> result;
    for (int fed : resource(source).feeds) {
        if (!resource(fed).isRemoved)
            result.push_back(fed);
    }
    const int ip = ipOf(source);
    if (ip >= 0 && std::find(result.begin(), result.end(), ip) == result.end())
        result.push_back(ip);
    return result;
}

std::vector<int> Design::sourcesOf(int ip) const
{
    std::vector<int> result = ownOf(ip, [](const Resource& each) { return each.isSource(); });
    const std::vector<int> feeders = m_feeders.value(ip);
    result.insert(result.end(), feeders.begin(), feeders.end());
    return result;
}

std::vector<Link> Design::linksOf(int index) const
{
    std::vector<Link> result;
    const auto links = m_links.constFind(index);
    if (links == m_links.constEnd())
        return result;
    for (const Link& link : *links) {
        if (!resource(link.other).isRemoved)
            result.push_back(link);
    }
    return result;
}

} // namespace mirn::zelengine
