// SPDX-License-Identifier: MIT
#include "engine/rules/ipplacement.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/lockrules.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

bool contains(const std::vector<int>& list, int value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

QString tooFewSites(const QString& path, std::size_t wanted, std::size_t found, const std::vector<QString>& units)
{
    return QStringLiteral("%1 has %2 parts to place, but %3 free in %4")
        .arg(path, QString::number(wanted),
            found == 1 ? QStringLiteral("1 site is") : QStringLiteral("%1 sites are").arg(found),
            units.size() == 1 ? units.front() : units.front() + QStringLiteral(" and ") + units.back());
}

} // namespace

IpPlacement::IpPlacement(const Device& device, const Design& design, PairRules::Rules inForce)
    : m_device(device)
    , m_design(design)
    , m_rules(device, design, inForce)
    , m_inForce(inForce)
{ }

// Uses the unit alone if all parts fit into it, else together with the first neighbour for which they fit.
Proposal IpPlacement::propose(int ip, const Site& site) const
{
    const Parts parts = partsOf(ip);
    const auto locked = std::find_if(
        parts.held.rbegin(), parts.held.rend(), [this](int part) { return m_design.resource(part).locked; });
    const QString& path = m_design.resource(ip).path;
    if (parts.movable.empty() && locked != parts.held.rend())
        return refused(lockrules::refusalToLeave(m_device, m_design.resource(*locked)));
    if (parts.movable.empty())
        return refused(QStringLiteral("%1 has no part that could be moved").arg(path));
    if (site.group.isEmpty())
        return refused(QStringLiteral("%1 has no sites for parts").arg(site.name));

    Proposal proposal = fill(ip, parts, {site.group});
    const QStringList neighbours = proposal.isAllowed() ? QStringList() : m_device.neighboursOf(site.group);
    for (const QString& neighbour : neighbours) {
        Proposal wider = fill(ip, parts, {site.group, neighbour});
        const bool isEnough = wider.isAllowed();
        proposal = std::move(wider);
        if (isEnough)
            break;
    }
    if (proposal.isAllowed() && isInForce(proposal))
        return refused(QStringLiteral("%1 is already on %2").arg(path, site.name));
    return proposal;
}

IpPlacement::Parts IpPlacement::partsOf(int ip) const
{
    Parts parts;
    for (int part : m_design.partsOf(ip))
        (m_design.resource(part).isHeld() ? parts.held : parts.movable).push_back(part);
    return parts;
}

// Assigns the parts to the free sites of the units, in order. A site that one of these parts occupies counts as free.
// At least one part goes into the first unit.
Proposal IpPlacement::fill(int ip, const Parts& parts, const std::vector<QString>& units) const
{
    Proposal proposal;
    for (const QString& unit : units) {
        for (const Site* site : m_device.sitesOfGroup(unit)) {
            const int occupant = m_design.occupant(site->id);
            const bool free = occupant < 0 || contains(parts.movable, occupant);
            const std::size_t next = proposal.placements.size();
            if (free && next < parts.movable.size() && m_device.accepts(*site, m_design.resource(ip).type->parts))
                proposal.placements.push_back({parts.movable[next], site->id});
        }
        if (proposal.placements.empty())
            return refused(QStringLiteral("%1 has no free site for parts of %2").arg(unit, m_design.resource(ip).path));
        Refusal refusal = m_rules.refusalBySources(ip, unit);
        if (!refusal.isEmpty())
            return refused(std::move(refusal));
    }
    if (proposal.placements.size() < parts.movable.size())
        return refused(
            tooFewSites(m_design.resource(ip).path, parts.movable.size(), proposal.placements.size(), units));
    Refusal refusal = refusalByHeld(parts.held, units);
    if (refusal.isEmpty())
        refusal = refusalByOthers(proposal);
    return refusal.isEmpty() ? proposal : refused(std::move(refusal));
}

Refusal IpPlacement::refusalByHeld(const std::vector<int>& held, const std::vector<QString>& units) const
{
    for (int part : held) {
        const Resource& resource = m_design.resource(part);
        const Site* kept = m_device.site(resource.site);
        if (!kept || !resource.type->sharesUnit)
            continue;
        const QString sentence = resource.fixed ? QStringLiteral("%1 is fixed in %2, which is not next to %3")
                                                : QStringLiteral("%1 is locked in %2, which is not next to %3");
        for (const QString& unit : units) {
            if (!m_rules.areNeighbours(kept->group, unit))
                return sentence.arg(resource.path, kept->group, unit);
        }
    }
    return {};
}

// The units were chosen by the rules that hold for all parts alike; what is left are the links of a part and the rules
// of a group, which few parts have.
Refusal IpPlacement::refusalByOthers(const Proposal& proposal) const
{
    const auto isBound = [this](const Placement& placement) {
        const Resource& part = m_design.resource(placement.resource);
        return m_design.hasLinks(placement.resource) || part.type->mostInGroup > 0 || !part.statement().isEmpty();
    };
    if (std::none_of(proposal.placements.begin(), proposal.placements.end(), isBound))
        return {};
    Design after = m_design;
    for (const Placement& placement : proposal.placements)
        after.setSite(placement.resource, -1);
    const PairRules rules(m_device, after, m_inForce);
    for (const Placement& placement : proposal.placements) {
        Refusal refusal = rules.refusalAt(placement.resource, *m_device.site(placement.site));
        if (!refusal.isEmpty())
            return refusal;
        after.setSite(placement.resource, placement.site);
    }
    return {};
}

bool IpPlacement::isInForce(const Proposal& proposal) const
{
    return std::all_of(proposal.placements.begin(), proposal.placements.end(),
        [this](const Placement& placement) { return m_design.resource(placement.resource).site == placement.site; });
}

} // namespace mirn::zelengine
