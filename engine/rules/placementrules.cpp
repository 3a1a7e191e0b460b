// SPDX-License-Identifier: MIT
#include "engine/rules/placementrules.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/ipplacement.h"
#include "engine/rules/lockrules.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

PlacementRules::PlacementRules(const Device& device, const Design& design, PairRules::Rules inForce)
    : m_device(device)
    , m_design(design)
    , m_inForce(inForce)
    , m_pairs(device, design, inForce)
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
    if (resource.isIp())
        return IpPlacement(m_device, m_design, m_inForce).propose(index, *site);
    refusal = m_pairs.refusalAt(index, *site);
    return refusal.isEmpty() ? Proposal{{{index, site->id}}, {}} : refused(std::move(refusal));
}

std::vector<int> PlacementRules::sitesFor(int resource) const
{
    std::vector<int> result;
    const ResourceType* type = m_design.resource(resource).type;
    if (!type)
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
    if (resource.isFolder())
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
            .arg(site.name, m_device.kindOf(site).title, nameOf(resource.type));
    const int occupant = m_design.occupant(site.id);
    if (occupant < 0)
        return {};
    const QString& present = m_design.resource(occupant).path;
    return present == resource.path ? QStringLiteral("%1 is already on %2").arg(present, site.name)
                                    : QStringLiteral("%1 is occupied by %2").arg(site.name, present);
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
        if (!m_design.resource(index).isIp())
            continue;
        const std::vector<int> sources = m_design.sourcesOf(index);
        concerned.insert(concerned.end(), sources.begin(), sources.end());
    }
    for (int index : concerned) {
        const Site* site = m_device.site(m_design.resource(index).site);
        Refusal refusal = site ? m_pairs.refusalAt(index, *site) : Refusal();
        if (!refusal.isEmpty())
            return refusal;
    }
    return {};
}

} // namespace mirn::zelengine
