// SPDX-License-Identifier: MIT
#include "engine/model/device.h"

#include <QRegularExpression>

#include <algorithm>

namespace mirn::zelengine {

bool readsAsId(const QString& text)
{
    static const QRegularExpression Number(QStringLiteral("^\\s*[+-]?\\d+\\s*$"));
    return Number.match(text).hasMatch();
}

bool Device::addSite(Site site)
{
    if (m_byId.contains(site.id) || m_byName.contains(site.name))
        return false;
    const int index = static_cast<int>(m_sites.size());
    m_byId.insert(site.id, index);
    m_byName.insert(site.name, index);
    if (!site.group.isEmpty()) {
        Group& group = m_groups[site.group];
        group.sites.push_back(index);
        group.neighbours += site.neighbours;
    }
    m_sites.push_back(std::move(site));
    return true;
}

int Device::kindIndex(const QString& name) const
{
    const auto it
        = std::find_if(m_kinds.begin(), m_kinds.end(), [&name](const SiteKind& kind) { return kind.name == name; });
    return it == m_kinds.end() ? -1 : static_cast<int>(it - m_kinds.begin());
}

const SiteKind& Device::kindOf(const Site& site) const
{
    return m_kinds[static_cast<std::size_t>(site.kind)];
}

bool Device::accepts(const Site& site, const ResourceType* type) const
{
    const std::vector<const ResourceType*>& accepted = kindOf(site).accepts;
    return std::find(accepted.begin(), accepted.end(), type) != accepted.end();
}

bool Device::isUnit(const Site& site) const
{
    const std::vector<const ResourceType*>& accepted = kindOf(site).accepts;
    return std::any_of(accepted.begin(), accepted.end(), [](const ResourceType* type) { return type->parts; });
}

const Site* Device::site(int id) const
{
    const auto it = m_byId.constFind(id);
    return it == m_byId.constEnd() ? nullptr : &m_sites[static_cast<std::size_t>(*it)];
}

const Site* Device::site(const QString& name) const
{
    const auto it = m_byName.constFind(name);
    return it == m_byName.constEnd() ? nullptr : &m_sites[static_cast<std::size_t>(*it)];
}

std::vector<const Site*> Device::sitesOfGroup(const QString& group) const
{
    std::vector<const Site*> result;
    const auto it = m_groups.constFind(group);
    if (it != m_groups.constEnd()) {
        for (int index : it->sites)
            result.push_back(&m_sites[static_cast<std::size_t>(index)]);
    }
    return result;
}

QStringList Device::neighboursOf(const QString& group) const
{
    const auto it = m_groups.constFind(group);
    return it == m_groups.constEnd() ? QStringList() : it->neighbours;
}

std::vector<const Site*> Device::sitesAccepting(const ResourceType* type) const
{
    std::vector<const Site*> result;
    for (const Site& site : m_sites) {
        if (accepts(site, type))
            result.push_back(&site);
    }
    return result;
}

} // namespace mirn::zelengine
