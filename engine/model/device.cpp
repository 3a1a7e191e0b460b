// SPDX-License-Identifier: MIT
#include "engine/model/device.h"

#include <algorithm>

namespace mirn::zelengine {

// Asked for each of the device's sites, which may be millions, so it does without a regular expression.
bool readsAsId(const QString& text)
{
    const auto isBlank = [](QChar letter) {
        return letter == QLatin1Char(' ') || (letter >= QLatin1Char('\t') && letter <= QLatin1Char('\r'));
    };
    const auto isDigit = [](QChar letter) { return letter >= QLatin1Char('0') && letter <= QLatin1Char('9'); };
    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    const bool hasSign = first != text.end() && (*first == QLatin1Char('+') || *first == QLatin1Char('-'));
    const auto digits = hasSign ? first + 1 : first;
    const auto end = std::find_if_not(digits, text.end(), isDigit);
    return end != digits && std::all_of(end, text.end(), isBlank);
}

bool Device::addSite(Site site)
{
    if (!m_index.add(site, m_sites))
        return false;
    const int index = static_cast<int>(m_sites.size());
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
    const int index = m_index.find(id);
    return index < 0 ? nullptr : &m_sites[static_cast<std::size_t>(index)];
}

const Site* Device::site(const QString& name) const
{
    const int index = m_index.find(name, m_sites);
    return index < 0 ? nullptr : &m_sites[static_cast<std::size_t>(index)];
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
