// SPDX-License-Identifier: MIT
#include "engine/rules/placementrules.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/lockrules.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

bool contains(const std::vector<int>& list, int value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

Proposal refused(Refusal refusal)
{
    return {{}, std::move(refusal)};
}

} // namespace

PlacementRules::PlacementRules(const Device& device, const Design& design, Rules inForce)
    : m_device(device)
    , m_design(design)
    , m_inForce(inForce)
{ }

Proposal PlacementRules::propose(int index, int siteId) const
{
    const Site* site = m_device.site(siteId);
    if (!site)
        return refused(QStringLiteral("there is no site %1").arg(siteId));
    const Resource& resource = m_design.resource(index);
    Refusal refusal = refusalBySite(index, *site);
    if (!refusal.isEmpty())
        return refused(std::move(refusal));
    if (resource.type == ResourceType::Ip)
        return proposeIp(index, *site);
    Refusal refusalByOthers = refusalByType(index, *site);
    return refusalByOthers.isEmpty() ? Proposal{{{index, site->id}}, {}} : refused(std::move(refusalByOthers));
}

// Applies the rules for the resource's type; the site must accept it.
Refusal PlacementRules::refusalByType(int index, const Site& site) const
{
    switch (m_design.resource(index).type) {
    case ResourceType::DcuChannel:
        return refusalByChannels(index, site);
    case ResourceType::ExtRef:
    case ResourceType::Pll:
        return refusalByServedUnits(index, site);
    case ResourceType::Uvccio:
        return refusalBySupplies(m_design.resource(index), site);
    case ResourceType::Ip:
    case ResourceType::Folder:
        break;
    }
    return {};
}

std::vector<int> PlacementRules::sitesFor(int resource) const
{
    std::vector<int> result;
    const ResourceType type = m_design.resource(resource).type;
    if (type == ResourceType::Folder)
        return result;
    for (const Site* site : m_device.sitesAccepting(type)) {
        if (propose(resource, site->id).isAllowed())
            result.push_back(site->id);
    }
    return result;
}

// Places them one after the other, because the placements of a legal state can be made in any order.
Refusal PlacementRules::refusalToMove(const std::vector<Placement>& moves) const
{
    Design after = m_design;
    for (const Placement& move : moves) {
        const Resource& resource = m_design.resource(move.resource);
        if (m_design.find(resource.path) != move.resource) // its index is still valid
            return QStringLiteral("%1 was removed").arg(resource.path);
        if (resource.isHeld())
            return lockrules::refusalToLeave(m_device, resource);
        after.setSite(move.resource, -1);
    }
    const PlacementRules rules(m_device, after);
    for (const Placement& move : moves) {
        Proposal proposal = move.site < 0 ? Proposal() : rules.propose(move.resource, move.site);
        if (!proposal.isAllowed())
            return std::move(proposal.refusal);
        after.setSite(move.resource, move.site);
    }
    return {};
}

Proposal PlacementRules::proposeSwap(int resource, int other) const
{
    if (resource == other)
        return refused(QStringLiteral("%1 cannot swap with itself").arg(m_design.resource(resource).path));
    for (int index : {resource, other}) {
        if (m_design.resource(index).site < 0)
            return refused(QStringLiteral("%1 is not placed").arg(m_design.resource(index).path));
    }
    Proposal proposal{{{resource, m_design.resource(other).site}, {other, m_design.resource(resource).site}}, {}};
    proposal.refusal = refusalToMove(proposal.placements);
    return proposal;
}

Proposal PlacementRules::proposeReset(int resource) const
{
    Proposal proposal;
    int held = -1;
    for (int index : m_design.subtree(resource)) {
        const Resource& part = m_design.resource(index);
        if (part.site >= 0 && !part.isHeld())
            proposal.placements.push_back({index, -1});
        else if (part.locked || (part.fixed && held < 0)) // a lock is told first, because it can be taken off
            held = index;
    }
    if (!proposal.placements.empty())
        return proposal;
    return refused(held < 0 ? QStringLiteral("%1 is not placed").arg(m_design.resource(resource).path)
                            : lockrules::refusalToLeave(m_device, m_design.resource(held)));
}

Refusal PlacementRules::refusalToPlace(int index) const
{
    const Resource& resource = m_design.resource(index);
    if (resource.isHeld())
        return lockrules::refusalToLeave(m_device, resource);
    if (resource.type == ResourceType::Folder)
        return QStringLiteral("%1 only groups others and cannot be placed itself").arg(resource.path);
    return {};
}

// Applies the rules that hold for every type of resource.
Refusal PlacementRules::refusalBySite(int index, const Site& site) const
{
    Refusal refusal = refusalToPlace(index);
    if (!refusal.isEmpty())
        return refusal;
    const Resource& resource = m_design.resource(index);
    if (!m_device.accepts(site, resource.type))
        return QStringLiteral("%1 (%2) does not take resources of type %3")
            .arg(site.name, m_device.kindOf(site).title, resourceTypeName(resource.type));
    const int occupant = m_design.occupant(site.id);
    if (occupant < 0)
        return {};
    const QString& present = m_design.resource(occupant).path;
    return present == resource.path ? QStringLiteral("%1 is already on %2").arg(present, site.name)
                                    : QStringLiteral("%1 is occupied by %2").arg(site.name, present);
}

Refusal PlacementRules::refusalByChannels(int channel, const Site& site) const
{
    const int ip = m_design.ipOf(channel);
    if (ip < 0)
        return {};
    for (int other : m_design.partsOf(ip, ResourceType::DcuChannel)) {
        Refusal refusal = other == channel || !m_inForce.testFlag(ChannelsTogether)
            ? Refusal()
            : refusalByChannel(other, site.group);
        if (!refusal.isEmpty())
            return refusal;
    }
    return refusalByClocks(ip, site.group);
}

// Checks that a channel of the IP does not forbid another one in the unit.
Refusal PlacementRules::refusalByChannel(int channel, const QString& unit) const
{
    const Site* site = m_device.site(m_design.resource(channel).site);
    if (!site || areNeighbours(site->group, unit))
        return {};
    return {
        QStringLiteral("%1 is in %2, which is not next to %3").arg(m_design.resource(channel).path, site->group, unit),
        channel};
}

Refusal PlacementRules::refusalByServedUnits(int clock, const Site& site) const
{
    const bool isInUnit = !site.group.isEmpty() && !site.reaches.isEmpty();
    if (isInUnit && !m_design.isFeeder(clock) && m_inForce.testFlag(NoIdleClocks))
        return QStringLiteral("%1 serves only %2, where %3 feeds nothing")
            .arg(site.name, site.group, m_design.resource(clock).path);
    const std::vector<int> ips = m_inForce.testFlag(Reach) ? m_design.fedBy(clock) : std::vector<int>();
    if (site.reaches.isEmpty() && !ips.empty())
        return refusalToServe(clock, ips.front(), site);
    for (int ip : ips) {
        for (int channel : m_design.partsOf(ip, ResourceType::DcuChannel)) {
            Refusal refusal = refusalByServedChannel(channel, site);
            if (!refusal.isEmpty())
                return refusal;
        }
    }
    return {};
}

Refusal PlacementRules::refusalToServe(int clock, int ip, const Site& site) const
{
    return QStringLiteral("%1 reaches no SerDes unit, but %2 feeds %3")
        .arg(site.name, m_design.resource(clock).path, m_design.resource(ip).path);
}

Refusal PlacementRules::refusalByServedChannel(int channel, const Site& clockSite) const
{
    const Site* site = m_device.site(m_design.resource(channel).site);
    if (!site || clockSite.reaches.contains(site->group))
        return {};
    return {QStringLiteral("%1 does not reach %2, where %3 is")
                .arg(clockSite.name, site->group, m_design.resource(channel).path),
        channel};
}

Refusal PlacementRules::refusalBySupplies(const Resource& supply, const Site& site) const
{
    if (supply.voltage.isEmpty() || site.group.isEmpty() || !m_inForce.testFlag(Voltages))
        return {};
    for (const Site* other : m_device.sitesOfGroup(site.group)) {
        const int occupant = m_design.occupant(other->id);
        if (occupant < 0 || m_design.resource(occupant).path == supply.path)
            continue;
        Refusal refusal = refusalBySupply(occupant, supply, site.group);
        if (!refusal.isEmpty())
            return refusal;
    }
    return {};
}

Refusal PlacementRules::refusalBySupply(int present, const Resource& supply, const QString& bank) const
{
    const Resource& other = m_design.resource(present);
    if (other.voltage.isEmpty() || supply.voltage.isEmpty() || other.voltage == supply.voltage)
        return {};
    return {QStringLiteral("%1 needs %2, but %3 gives %4 to %5")
                .arg(supply.path, supply.voltage, other.path, other.voltage, bank),
        present};
}

// Checks that all placed clock sources reach the unit in which a channel of the IP would be placed.
Refusal PlacementRules::refusalByClocks(int ip, const QString& unit) const
{
    for (int clock : m_design.clocksOf(ip)) {
        const Site* site = m_device.site(m_design.resource(clock).site);
        if (site && m_inForce.testFlag(Reach) && !site->reaches.contains(unit))
            return {QStringLiteral("%1 on %2 does not reach %3").arg(m_design.resource(clock).path, site->name, unit),
                clock};
    }
    return {};
}

// The device file may name the neighbour on either side, because the order of placing must not matter.
bool PlacementRules::areNeighbours(const QString& unit, const QString& other) const
{
    return unit == other || m_device.neighboursOf(unit).contains(other) || m_device.neighboursOf(other).contains(unit);
}

bool PlacementRules::isInForce(const Proposal& proposal) const
{
    return std::all_of(proposal.placements.begin(), proposal.placements.end(),
        [this](const Placement& placement) { return m_design.resource(placement.resource).site == placement.site; });
}

Refusal PlacementRules::refusalToRestore(const QString& path) const
{
    const int top = m_design.findRemoved(path);
    if (top < 0)
        return QStringLiteral("no resource \"%1\" was removed").arg(path);
    const int parent = m_design.resource(top).parent;
    if (parent >= 0 && m_design.find(m_design.resource(parent).path) < 0)
        return QStringLiteral("%1 is part of %2, which is removed").arg(path, m_design.resource(parent).path);
    for (int index : m_design.subtree(top)) {
        const Site* site = m_device.site(m_design.restoredSite(index));
        const int occupant = site ? m_design.occupant(site->id) : -1;
        if (occupant >= 0)
            return QStringLiteral("%1 is fixed on %2, which is occupied by %3")
                .arg(m_design.resource(index).path, site->name, m_design.resource(occupant).path);
    }
    Design restored = m_design;
    restored.restore(top);
    return PlacementRules(m_device, restored).refusalOfPresent(top);
}

Refusal PlacementRules::refusalOfPresent(int top) const
{
    const std::vector<int> branch = m_design.subtree(top);
    std::vector<int> concerned = branch;
    for (int index : branch) {
        if (m_design.resource(index).type != ResourceType::Ip)
            continue;
        const std::vector<int> clocks = m_design.clocksOf(index);
        concerned.insert(concerned.end(), clocks.begin(), clocks.end());
    }
    for (int index : concerned) {
        const Site* site = m_device.site(m_design.resource(index).site);
        Refusal refusal = site ? refusalByType(index, *site) : Refusal();
        if (!refusal.isEmpty())
            return refusal;
    }
    return {};
}

Refusal PlacementRules::refusalOfPair(int index, int other) const
{
    const Resource& resource = m_design.resource(index);
    const Site* site = m_device.site(resource.site);
    if (!site)
        return {};
    switch (resource.type) {
    case ResourceType::DcuChannel:
        return refusalByChannel(other, site->group);
    case ResourceType::ExtRef:
    case ResourceType::Pll:
        return site->reaches.isEmpty() ? refusalToServe(index, m_design.ipOf(other), *site)
                                       : refusalByServedChannel(other, *site);
    case ResourceType::Uvccio:
        return m_design.resource(other).site < 0 ? Refusal() : refusalBySupply(other, resource, site->group);
    case ResourceType::Ip:
    case ResourceType::Folder:
        break;
    }
    return {};
}

// Uses the unit alone if all channels fit into it, else together with the first neighbour for which they fit.
Proposal PlacementRules::proposeIp(int ip, const Site& site) const
{
    std::vector<int> channels;
    Refusal refusalByLock;
    for (int channel : m_design.partsOf(ip, ResourceType::DcuChannel)) {
        const Resource& part = m_design.resource(channel);
        if (!part.isHeld())
            channels.push_back(channel);
        else if (part.locked)
            refusalByLock = lockrules::refusalToLeave(m_device, part);
    }
    const QString& path = m_design.resource(ip).path;
    if (channels.empty() && !refusalByLock.isEmpty())
        return refused(std::move(refusalByLock));
    if (channels.empty())
        return refused(QStringLiteral("%1 has no channel that could be moved").arg(path));
    if (site.group.isEmpty())
        return refused(QStringLiteral("%1 has no channels").arg(site.name));

    Proposal proposal = fillUnits(ip, channels, {site.group});
    if (proposal.isAllowed())
        return isInForce(proposal) ? refused(QStringLiteral("%1 is already on %2").arg(path, site.name)) : proposal;
    for (const QString& neighbour : m_device.neighboursOf(site.group)) {
        Proposal wider = fillUnits(ip, channels, {site.group, neighbour});
        if (wider.isAllowed())
            return isInForce(wider) ? refused(QStringLiteral("%1 is already on %2").arg(path, site.name)) : wider;
        proposal.refusal = wider.refusal;
    }
    return proposal;
}

// Assigns the channels to the free channel sites of the units, in order. A site that one of these channels occupies
// counts as free. At least one channel goes into the first unit.
Proposal PlacementRules::fillUnits(int ip, const std::vector<int>& channels, const std::vector<QString>& units) const
{
    const QString& path = m_design.resource(ip).path;
    Proposal proposal;
    for (const QString& unit : units) {
        for (const Site* site : m_device.sitesOfGroup(unit)) {
            const int occupant = m_design.occupant(site->id);
            const bool free = occupant < 0 || contains(channels, occupant);
            const std::size_t next = proposal.placements.size();
            if (free && next < channels.size() && m_device.accepts(*site, ResourceType::DcuChannel))
                proposal.placements.push_back({channels[next], site->id});
        }
        if (proposal.placements.empty())
            return refused(QStringLiteral("%1 has no free channel").arg(unit));
        Refusal refusal = refusalByClocks(ip, unit);
        if (!refusal.isEmpty())
            return refused(std::move(refusal));
    }
    if (proposal.placements.size() < channels.size())
        return refused(
            QStringLiteral("%1 has %2 channels to place, but %3 free in %4")
                .arg(path, QString::number(channels.size()),
                    proposal.placements.size() == 1 ? QStringLiteral("1 is")
                                                    : QStringLiteral("%1 are").arg(proposal.placements.size()),
                    units.size() == 1 ? units.front() : units.front() + QStringLiteral(" and ") + units.back()));
    for (int channel : m_design.partsOf(ip, ResourceType::DcuChannel)) {
        const Resource& part = m_design.resource(channel);
        const Site* kept = m_device.site(part.site);
        if (!part.isHeld() || !kept)
            continue;
        const QString sentence = part.fixed ? QStringLiteral("%1 is fixed in %2, which is not next to %3")
                                            : QStringLiteral("%1 is locked in %2, which is not next to %3");
        for (const QString& unit : units) {
            if (!areNeighbours(kept->group, unit))
                return refused(sentence.arg(part.path, kept->group, unit));
        }
    }
    return proposal;
}

} // namespace mirn::zelengine
