// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
struct Resource;

// The answer to "may this be locked" or "unlocked": the resources that it concerns, or one sentence that says why there
// are none.
struct LockProposal
{
    std::vector<int> resources;
    Refusal refusal;

    [[nodiscard]] bool isAllowed() const { return refusal.isEmpty(); }
};

// A lock keeps a resource on its site until somebody unlocks it. What the design file fixes needs no lock and gets
// none, so a resource is never both.
namespace lockrules {

// The resource and everything below it, as far as it is placed and neither fixed nor locked.
[[nodiscard]] LockProposal proposeLock(const Device& device, const Design& design, int resource);
// The resource and everything below it, as far as it is locked.
[[nodiscard]] LockProposal proposeUnlock(const Device& device, const Design& design, int resource);

// Why a resource cannot leave its site; empty if it can.
[[nodiscard]] Refusal refusalToLeave(const Device& device, const Resource& resource);

} // namespace lockrules
} // namespace mirn::zelengine
