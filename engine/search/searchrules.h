// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/placementrules.h"
#include "engine/search/grouprule.h"

#include <vector>

namespace mirn::zelengine {

// What a search regards. It leaves rules out to find out which of them stand against a placement.
struct SearchRules
{
    PairRules::Rules placement = PairRules::AllRules; // without those that a group rule says as well
    bool settings = true; // a site that a setting puts out of use takes nothing
    std::vector<GroupRule> groups;

    explicit SearchRules(std::vector<GroupRule> groupRules);
    // What PlacementRules is asked for, to check the same.
    [[nodiscard]] PairRules::Rules asked() const;
};

} // namespace mirn::zelengine
