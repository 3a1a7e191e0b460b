// SPDX-License-Identifier: MIT
#include "engine/rules/pairrules.h"

#include "engine/model/design.h"
#include "engine/model/device.h"

#include <algorithm>
#include <vector>

namespace mirn::zelengine {

PairRules::PairRules(const Device& device, const Design& design, Rules inForce)
    : m_device(device)
    , m_design(design)
    , m_inForce(inForce)
{ }

Refusal PairRules::refusalAt(int index, const Site& site) const
{
    const Resource& resource = m_design.resource(index);
    const int ip = m_design.ipOfPart(index);
    Refusal refusal = ip < 0 ? Refusal() : refusalByParts(index, ip, site);
    if (refusal.isEmpty() && resource.isSource() && resource.type->mustReach)
        refusal = refusalByServedUnits(index, site);
    if (refusal.isEmpty())
        refusal = refusalByGroup(index, site);
    return refusal.isEmpty() ? refusalByLinks(index, site) : refusal;
}

Refusal PairRules::refusalByParts(int part, int ip, const Site& site) const
{
    if (m_design.resource(part).type->sharesUnit && m_inForce.testFlag(SameUnit)) {
        for (int other : m_design.partsOf(ip)) {
            Refusal refusal = other == part ? Refusal() : refusalByUnitOf(other, site);
            if (!refusal.isEmpty())
                return refusal;
        }
    }
    return refusalBySources(ip, site);
}

// Checks that another resource does not keep one away from a site because of the unit that it is in.
Refusal PairRules::refusalByUnitOf(int other, const Site& site) const
{
    const Site* present = m_device.site(m_design.resource(other).site);
    if (!present || areNeighbours(present->group, site.group))
        return {};
    return {QStringLiteral("%1 is in %2, which is not next to %3")
                .arg(m_design.resource(other).path, present->unitName(), site.unitName()),
        other};
}

Refusal PairRules::refusalByServedUnits(int source, const Site& site) const
{
    const bool isInUnit = !site.group.isEmpty() && !site.reaches.isEmpty();
    if (isInUnit && !m_design.isFeeder(source) && m_inForce.testFlag(NoIdleSources))
        return QStringLiteral("%1 serves only %2, where %3 feeds nothing")
            .arg(site.name, site.group, m_design.resource(source).path);
    const std::vector<int> ips = m_inForce.testFlag(Reach) ? m_design.fedBy(source) : std::vector<int>();
    if (site.reaches.isEmpty() && !ips.empty())
        return refusalToServe(source, ips.front(), site);
    for (int ip : ips) {
        for (int part : m_design.partsOf(ip)) {
            Refusal refusal = refusalByServed(part, site);
            if (!refusal.isEmpty())
                return refusal;
        }
    }
    return {};
}

Refusal PairRules::refusalToServe(int source, int ip, const Site& site) const
{
    return QStringLiteral("%1 reaches no unit, but %2 feeds %3")
        .arg(site.name, m_design.resource(source).path, m_design.resource(ip).path);
}

Refusal PairRules::refusalByServed(int served, const Site& sourceSite) const
{
    const Site* site = m_device.site(m_design.resource(served).site);
    if (!site || sourceSite.reaches.contains(site->group))
        return {};
    return {QStringLiteral("%1 does not reach %2, where %3 is")
                .arg(sourceSite.name, site->unitName(), m_design.resource(served).path),
        served};
}

Refusal PairRules::refusalBySources(int ip, const Site& site) const
{
    if (!m_inForce.testFlag(Reach))
        return {};
    for (int source : m_design.sourcesOf(ip)) {
        Refusal refusal = m_design.resource(source).type->mustReach ? refusalBySource(source, site) : Refusal();
        if (!refusal.isEmpty())
            return refusal;
    }
    return {};
}

Refusal PairRules::refusalBySource(int source, const Site& site) const
{
    const Site* sourceSite = m_device.site(m_design.resource(source).site);
    if (!sourceSite || sourceSite->reaches.contains(site.group))
        return {};
    return {QStringLiteral("%1 on %2 does not reach %3")
                .arg(m_design.resource(source).path, sourceSite->name, site.unitName()),
        source};
}

// The rules of a bank or a unit as a whole.
Refusal PairRules::refusalByGroup(int index, const Site& site) const
{
    const Resource& resource = m_design.resource(index);
    const int most = m_inForce.testFlag(Capacity) ? resource.type->mostInGroup : 0;
    const bool states = m_inForce.testFlag(Agreement) && !resource.statement().isEmpty();
    if (site.group.isEmpty() || (most == 0 && !states))
        return {};
    int others = 0;
    for (const Site* member : m_device.sitesOfGroup(site.group)) {
        const int occupant = m_design.occupant(member->id);
        if (occupant < 0 || occupant == index || m_design.resource(occupant).type != resource.type)
            continue;
        Refusal refusal = states ? refusalByStatement(occupant, resource, site.group) : Refusal();
        if (!refusal.isEmpty())
            return refusal;
        if (++others == most)
            return {QStringLiteral("%1 takes at most %2 of type %3, and %4 is there")
                        .arg(site.group, QString::number(most), resource.type->name, m_design.resource(occupant).path),
                occupant};
    }
    return {};
}

Refusal PairRules::refusalByStatement(int present, const Resource& resource, const QString& group) const
{
    const QString wanted = resource.statement();
    const QString stated = m_design.resource(present).statement();
    if (stated.isEmpty() || wanted.isEmpty() || stated == wanted)
        return {};
    return {QStringLiteral("%1 needs %2, but %3 gives %4 to %5")
                .arg(resource.path, wanted, m_design.resource(present).path, stated, group),
        present};
}

Refusal PairRules::refusalByLinks(int resource, const Site& site) const
{
    for (const Link& link : m_design.linksOf(resource)) {
        Refusal refusal = refusalByLink(link, site);
        if (!refusal.isEmpty())
            return refusal;
    }
    return {};
}

Refusal PairRules::refusalByLink(const Link& link, const Site& site) const
{
    if (link.rule == Link::Rule::SameUnit && m_inForce.testFlag(SameUnit))
        return refusalByUnitOf(link.other, site);
    if (link.rule == Link::Rule::Reachable && m_inForce.testFlag(Reach))
        return link.isFirst ? refusalByServed(link.other, site) : refusalBySource(link.other, site);
    return {};
}

// The device file may name the neighbour on either side, because the order of placing must not matter. Sites without a
// group are in no common unit.
bool PairRules::areNeighbours(const QString& group, const QString& other) const
{
    if (group.isEmpty() || other.isEmpty())
        return false;
    return group == other || m_device.neighboursOf(group).contains(other)
        || m_device.neighboursOf(other).contains(group);
}

Refusal PairRules::refusalOfPair(int index, int other) const
{
    const Site* site = m_device.site(m_design.resource(index).site);
    if (!site)
        return {};
    Refusal refusal = refusalOfIp(index, other, *site);
    for (const Link& link : refusal.isEmpty() ? m_design.linksOf(index) : std::vector<Link>()) {
        if (link.other == other && refusal.isEmpty())
            refusal = refusalByLink(link, *site);
    }
    return refusal.isEmpty() ? refusalOfGroup(index, other, *site) : refusal;
}

// What two parts of one IP are to each other, or a source and a part that it serves.
Refusal PairRules::refusalOfIp(int index, int other, const Site& site) const
{
    const Resource& resource = m_design.resource(index);
    const int ip = m_design.ipOfPart(other);
    if (ip >= 0 && ip == m_design.ipOfPart(index))
        return resource.type->sharesUnit ? refusalByUnitOf(other, site) : Refusal();
    if (ip < 0 || !resource.isSource() || !resource.type->mustReach)
        return {};
    const std::vector<int> fed = m_design.fedBy(index);
    return std::find(fed.begin(), fed.end(), ip) == fed.end() ? Refusal() : refusalOfSource(index, other, site);
}

Refusal PairRules::refusalOfGroup(int index, int other, const Site& site) const
{
    const Site* otherSite = m_device.site(m_design.resource(other).site);
    const bool isOneGroup = otherSite && !site.group.isEmpty() && otherSite->group == site.group;
    return isOneGroup && m_design.resource(index).type == m_design.resource(other).type
        ? refusalByStatement(other, m_design.resource(index), site.group)
        : Refusal();
}

Refusal PairRules::refusalOfSource(int source, int served, const Site& site) const
{
    return site.reaches.isEmpty() ? refusalToServe(source, m_design.ipOf(served), site) : refusalByServed(served, site);
}

} // namespace mirn::zelengine
