// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"

#include <QFlags>
#include <QString>

namespace mirn::zelengine {

class Design;
class Device;
struct Resource;
struct Site;

// The rules that concern a resource together with others that are placed. Which of them apply is said by the resource's
// type in the device file and by the links of the design file; the resource itself counts as not placed. The questions
// below do not ask whether a site accepts the resource or is free.
class PairRules final
{
public:
    // Whoever asks what stands against a placement leaves some of them out.
    enum Rule : unsigned {
        SameUnit = 1, // the parts of one IP, and what is linked by this rule
        Reach = 2, // sources and the units that they serve, and what is linked by this rule
        NoIdleSources = 4, // a site inside a unit that reaches others takes no source that feeds nothing
        Agreement = 8, // of the resources in one group on one value of a property
        Capacity = 16, // of a group for the resources of one type
        AllRules = 31,
    };
    Q_DECLARE_FLAGS(Rules, Rule)

    // Both must outlive the rules.
    PairRules(const Device& device, const Design& design, Rules inForce = AllRules);

    [[nodiscard]] Refusal refusalAt(int resource, const Site& site) const;
    // The part of it that the group of a site decides for every part of an IP.
    [[nodiscard]] Refusal refusalBySources(int ip, const QString& group) const;
    // Why the present sites of two connected resources exclude each other. Empty if they do not, or if one has no site;
    // but a source on a site that reaches no unit is wrong wherever what it feeds will be.
    [[nodiscard]] Refusal refusalOfPair(int resource, int other) const;
    [[nodiscard]] bool areNeighbours(const QString& group, const QString& other) const;

private:
    [[nodiscard]] Refusal refusalByParts(int part, int ip, const Site& site) const;
    [[nodiscard]] Refusal refusalByServedUnits(int source, const Site& site) const;
    [[nodiscard]] Refusal refusalByLinks(int resource, const Site& site) const;
    [[nodiscard]] Refusal refusalByGroup(int resource, const Site& site) const;
    [[nodiscard]] Refusal refusalByUnitOf(int other, const Site& site) const;
    [[nodiscard]] Refusal refusalByServed(int served, const Site& sourceSite) const;
    [[nodiscard]] Refusal refusalBySource(int source, const QString& group) const;
    [[nodiscard]] Refusal refusalByStatement(int present, const Resource& resource, const QString& group) const;
    [[nodiscard]] Refusal refusalToServe(int source, int ip, const Site& site) const;
    [[nodiscard]] Refusal refusalOfSource(int source, int served, const Site& site) const;

    const Device& m_device;
    const Design& m_design;
    const Rules m_inForce;
};

} // namespace mirn::zelengine
