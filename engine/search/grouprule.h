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

    const ResourceType* type = nullptr;
    Kind kind = Kind::Agree;
    int most = 0; // for AtMost
    std::function<QString(const Resource&)> textOf; // for Agree; an empty text agrees with any
    QString sentence; // the rule in words, without capital and full stop
    PairRules::Rules same; // the rule by which PairRules says the same

    // Whether the rule counts for a resource.
    [[nodiscard]] bool concerns(const Resource& resource) const
    {
        return resource.type == type && (kind == Kind::AtMost || !textOf(resource).isEmpty());
    }
};

// The group rules that hold on a device.
[[nodiscard]] std::vector<GroupRule> groupRulesOf(const Device& device);

} // namespace mirn::zelengine
