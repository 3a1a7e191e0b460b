// SPDX-License-Identifier: MIT
#include "engine/search/searchrules.h"

#include <utility>

namespace mirn::zelengine {

SearchRules::SearchRules(std::vector<GroupRule> groupRules)
    : groups(std::move(groupRules))
{
    for (const GroupRule& rule : groups)
        placement &= ~rule.same;
}

PairRules::Rules SearchRules::asked() const
{
    PairRules::Rules result = placement;
    for (const GroupRule& rule : groups)
        result |= rule.same;
    return result;
}

} // namespace mirn::zelengine
