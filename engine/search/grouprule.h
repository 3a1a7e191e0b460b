// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/rules/placementrules.h"

#include <QString>

#include <functional>
#include <vector>

namespace mirn::zelengine {

class Device;

// A rule for all resources of one type that are placed in one group of sites: a property has the same text in all of
// them that have one, or there are at most so many of them. Sites without a group know no such rule.
struct GroupRule
{
    enum class Kind { Agree, AtMost };

    ResourceType type = ResourceType::Folder;
    Kind kind = Kind::Agree;
    int most = 0; // for AtMost
    std::function<QString(const Resource&)> textOf; // for Agree; an empty text agrees with any
    QString sentence; // the rule in words, without capital and full stop
    PlacementRules::Rules same; // the rules by which PlacementRules says the same; none if it does not

    // Whether the rule counts for a resource.
    [[nodiscard]] bool concerns(const Resource& resource) const
    {
        return resource.type == type && (kind == Kind::AtMost || !textOf(resource).isEmpty());
    }
    // Whether this is a rule AtMost and those placed in the site's group leave no place to a resource.
    [[nodiscard]] bool isFull(const Device& device, const Design& design, int resource, const Site& site) const;
};

// The group rules that hold on a device.
[[nodiscard]] std::vector<GroupRule> groupRulesOf(const Device& device);

} // namespace mirn::zelengine
