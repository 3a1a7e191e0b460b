// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"

#include <QFlags>
#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
struct Resource;
struct Site;

struct Placement
{
    int resource = -1;
    int site = -1; // id
};

// The answer to "may this go there": the placements it would cause, or one sentence that says why not.
struct Proposal
{
    std::vector<Placement> placements;
    Refusal refusal;

    [[nodiscard]] bool isAllowed() const { return refusal.isEmpty(); }
};

// Decides where a resource may be placed; every question and every change goes through propose(). A site must be free
// and of a kind that accepts the resource. The channels of one IP share one unit or neighbouring ones. A clock source
// must reach every unit in which a channel that it serves is placed. The supplies of one bank have one voltage. An IP
// is placed on a unit by placing its channels there, and in one neighbouring unit if that unit is too small.
// What is fixed or locked stays on its site.
//
// A state is legal if every placement in it is allowed. Every part of a legal state is legal, because no rule requires
// that something is placed or exists. Therefore resets and removals of what is not held on its site are never refused,
// only placements and restorations; and the placements of a legal state can be made in any order. Placement files rely
// on both: they hold the removals, then the placements, then the locks. A rule that breaks this loses saved work.
class PlacementRules
{
public:
    // The rules that concern two resources, or a resource and what it feeds. Whoever asks what stands against a
    // placement leaves some of them out.
    enum Rule : unsigned {
        ChannelsTogether = 1, // the channels of one IP
        Reach = 2, // clock sources and the units that they serve
        NoIdleClocks = 4, // a clock site inside a unit takes no source that feeds nothing
        Voltages = 8, // of the supplies of one bank
        AllRules = 15,
    };
    Q_DECLARE_FLAGS(Rules, Rule)

    // Both must outlive the rules.
    PlacementRules(const Device& device, const Design& design, Rules inForce = AllRules);

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
    // Why the present placements of a resource and of everything below it, or of the clock sources that feed an IP
    // among them, are illegal; empty if they are legal.
    [[nodiscard]] Refusal refusalOfPresent(int resource) const;
    // Why the present sites of two resources exclude each other: two channels of one IP, a clock source and a channel
    // that it serves, or two supplies. Empty if they do not, or if one has no site; but a clock source on a site that
    // reaches no unit is wrong wherever the channel will be.
    [[nodiscard]] Refusal refusalOfPair(int resource, int other) const;

private:
    [[nodiscard]] Refusal refusalByType(int resource, const Site& site) const;
    [[nodiscard]] Refusal refusalBySite(int index, const Site& site) const;
    [[nodiscard]] Refusal refusalByChannels(int channel, const Site& site) const;
    [[nodiscard]] Refusal refusalByServedUnits(int clock, const Site& site) const;
    [[nodiscard]] Refusal refusalBySupplies(const Resource& supply, const Site& site) const;
    [[nodiscard]] Refusal refusalByClocks(int ip, const QString& unit) const;
    [[nodiscard]] Refusal refusalByChannel(int channel, const QString& unit) const;
    [[nodiscard]] Refusal refusalToServe(int clock, int ip, const Site& site) const;
    [[nodiscard]] Refusal refusalByServedChannel(int channel, const Site& clockSite) const;
    [[nodiscard]] Refusal refusalBySupply(int present, const Resource& supply, const QString& bank) const;
    [[nodiscard]] bool areNeighbours(const QString& unit, const QString& other) const;

    [[nodiscard]] bool isInForce(const Proposal& proposal) const;
    [[nodiscard]] Proposal proposeIp(int ip, const Site& site) const;
    [[nodiscard]] Proposal fillUnits(int ip, const std::vector<int>& channels, const std::vector<QString>& units) const;

    const Device& m_device;
    const Design& m_design;
    const Rules m_inForce;
};

} // namespace mirn::zelengine
