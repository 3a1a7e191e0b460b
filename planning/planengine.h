// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"

namespace mirn::zelchipview {

// Returns the engine's answers to the optional questions of planning aids; all are empty if it does not derive from
// zelplanengine.
[[nodiscard]] inline zelplanengine& planEngineOf(zelchipengine& engine)
{
    static zelplanengine silent;
    auto* plan = dynamic_cast<zelplanengine*>(&engine);
    return plan ? *plan : silent;
}

} // namespace mirn::zelchipview
