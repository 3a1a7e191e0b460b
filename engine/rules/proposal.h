// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"

#include <utility>
#include <vector>

namespace mirn::zelengine {

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

[[nodiscard]] inline Proposal refused(Refusal refusal)
{
    return {{}, std::move(refusal)};
}

} // namespace mirn::zelengine
