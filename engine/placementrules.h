// SPDX-License-Identifier: MIT
#pragma once

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

// The answer to "may this go there": the placements that it would mean, or one sentence that says why not.
struct Proposal
{
    std::vector<Placement> placements;
    QString refusal;

    [[nodiscard]] bool isAllowed() const { return refusal.isEmpty(); }
};

// Where a resource may be placed. Everything that asks or acts goes through propose(): a site must be free and of a
// kind that takes the resource; the channels of one IP share one unit or neighbouring ones; a clock source must reach
// every unit in which a channel that it serves is placed; the supplies of one bank have one voltage. An IP is placed on
// a unit by placing its channels there, and in one neighbouring unit when that unit is too small.
//
// A state is legal when nothing stands against any placement in it. Every part of a legal state is legal: no rule asks
// that something be placed, or that it be there. So a reset and a removal are never refused, only what puts something
// onto a site or brings something back; and the placements of a legal state can be made in any order. What is saved
// counts on both: it is the removals, then the placements. A rule that breaks this loses saved work.
class PlacementRules
{
public:
    // Both must outlive the rules.
    PlacementRules(const Device& device, const Design& design);

    [[nodiscard]] Proposal propose(int resource, int siteId) const;

    // The ids of all sites for which propose() has no objection.
    [[nodiscard]] std::vector<int> sitesFor(int resource) const;

    // What resetting a resource takes off its site: all of it and below it that is placed and not fixed.
    [[nodiscard]] Proposal proposeReset(int resource) const;

    // What is against Design::restore() of this path: it is not removed, its parent is, or one of its fixed parts has
    // lost its site to another resource. Empty: nothing.
    [[nodiscard]] QString objectionToReturn(const QString& path) const;
    // What is against a resource that restore() has just brought back: a fixed part, or a clock source elsewhere that
    // feeds an IP again. Empty: nothing.
    [[nodiscard]] QString objectionToReturned(int resource) const;

private:
    [[nodiscard]] QString objectionByType(int resource, const Site& site) const;
    [[nodiscard]] QString objectionToSite(const Resource& resource, const Site& site) const;
    [[nodiscard]] QString objectionToChannel(int channel, const Site& site) const;
    [[nodiscard]] QString objectionToClock(int clock, const Site& site) const;
    [[nodiscard]] QString objectionToSupply(const Resource& supply, const Site& site) const;
    [[nodiscard]] QString objectionOfClocks(int ip, const QString& unit) const;
    [[nodiscard]] bool areNeighbours(const QString& unit, const QString& other) const;
    [[nodiscard]] std::vector<QString> neighboursOf(const QString& unit) const;

    [[nodiscard]] bool isInForce(const Proposal& proposal) const;
    [[nodiscard]] Proposal proposeIp(int ip, const Site& site) const;
    [[nodiscard]] Proposal fillUnits(int ip, const std::vector<int>& channels, const std::vector<QString>& units) const;

    const Device& m_device;
    const Design& m_design;
};

} // namespace mirn::zelengine
