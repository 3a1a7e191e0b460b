// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/pairrules.h"
#include "engine/rules/proposal.h"

#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
struct Resource;
struct Site;

// Decides where a resource may be placed; every question and every change goes through propose(). A site must be free
// and of a kind that accepts the resource, PairRules say what those that are placed leave to it, and an IP is placed on
// a unit by IpPlacement. What is fixed or locked stays on its site.
//
// A state is legal if every placement in it is allowed. Every part of a legal state is legal, because no rule requires
// that something is placed or exists. Therefore resets and removals of what is not held on its site are never refused,
// only placements and restorations; and the placements of a legal state can be made in any order. Placement files rely
// on both: they hold the removals, then the placements, then the locks. A rule that breaks this loses saved work.
class PlacementRules
{
public:
    // Both must outlive the rules.
    PlacementRules(const Device& device, const Design& design, PairRules::Rules inForce = PairRules::AllRules);

    [[nodiscard]] Proposal propose(int resource, int siteId) const;

    // Why propose() objects to every site, whichever it is.
    [[nodiscard]] Refusal refusalToPlace(int resource) const;

    // The ids of all sites for which propose() has no objection.
    [[nodiscard]] std::vector<int> sitesFor(int resource) const;

    // Whether several resources may change their places together, such as two that swap their sites: what may stay on
    // no site (-1), what the rules say of the state that follows. An IP takes part by its channels.
    [[nodiscard]] Refusal refusalToMove(const std::vector<Placement>& moves) const;

    // The exchange of the sites of two placed resources.
    [[nodiscard]] Proposal proposeSwap(int resource, int other) const;

    // The placements that a reset would remove: the resource and everything below it, as far as it is placed and
    // neither fixed nor locked.
    [[nodiscard]] Proposal proposeReset(int resource) const;

    // Why Design::restore() of this path is not possible: the resource is not removed, its parent is, one of its fixed
    // parts has lost its site to another resource, or what returns would make the state illegal.
    [[nodiscard]] Refusal refusalToRestore(const QString& path) const;
    // Why the present placements of a resource and of everything below it, or of the sources that feed an IP
    // among them, are illegal; empty if they are legal.
    [[nodiscard]] Refusal refusalOfPresent(int resource) const;
    [[nodiscard]] Refusal refusalOfPair(int resource, int other) const
    {
        return m_pairs.refusalOfPair(resource, other);
    }

private:
    [[nodiscard]] Refusal refusalBySite(int index, const Site& site) const;

    const Device& m_device;
    const Design& m_design;
    const PairRules::Rules m_inForce;
    const PairRules m_pairs;
};

} // namespace mirn::zelengine
