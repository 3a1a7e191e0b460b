// SPDX-License-Identifier: MIT
#include "importer/unitcheck.h"

#include "importer/translation.h"

#include <algorithm>
#include <string_view>

namespace mirn::zelimporter {

UnitCheck::UnitCheck(const ImportedSites& sites, const ImportedDesign& design)
    : m_sites(sites)
    , m_design(design)
{
    for (const ImportedSites::Membership& membership : sites.memberships) {
        if (membership.group != ImportedSites::None && membership.neighbours != ImportedSites::None)
            m_neighbours[membership.group].merge(groupsIn(membership.neighbours));
    }
}

UnitCheck::Groups UnitCheck::groupsIn(int list) const
{
    Groups result;
    if (list == ImportedSites::None)
        return result;
    std::string_view rest = m_sites.lists.text(list);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        result.insert(m_sites.groups.find(rest.substr(0, end)));
        rest.remove_prefix(std::min(rest.size(), end + 1));
    }
    return result;
}

bool UnitCheck::areNeighbours(int group, int other) const
{
    if (group == ImportedSites::None || other == ImportedSites::None)
        return false;
    const auto names = [this](int from, int to) {
        const auto found = m_neighbours.find(from);
        return found != m_neighbours.end() && found->second.count(to) > 0;
    };
    return group == other || names(group, other) || names(other, group);
}

QString UnitCheck::refusalOf(const ImportedDesign::Connection& connection) const
{
    const ImportedDesign::Resource& from = m_design.resources[static_cast<std::size_t>(connection.from)];
    const ImportedDesign::Resource& to = m_design.resources[static_cast<std::size_t>(connection.to)];
    if (from.site == ImportedDesign::None || to.site == ImportedDesign::None)
        return {};
    const ImportedSites::Membership source = m_sites.membership(from.site);
    const int group = m_sites.membership(to.site).group;
    const QString places = tr("\"%1\" is on \"%2\" and \"%3\" on \"%4\"")
                               .arg(from.path, m_sites.names.string(from.site), to.path, m_sites.names.string(to.site));
    if (connection.rule == QLatin1String("same-unit") && !areNeighbours(source.group, group))
        return tr("%1, which belong to groups apart; expected one group, or two that are neighbours").arg(places);
    if (connection.rule == QLatin1String("reachable") && groupsIn(source.reaches).count(group) == 0)
        return tr("%1, which the first does not reach; expected the second's group among what the first's site reaches")
            .arg(places);
    return {};
}

} // namespace mirn::zelimporter
