// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

// Returns one line for a person who does not see the site: its name, kind, state and occupant, as in "PLL_TL0, PLL,
// occupied by top/core, which is fixed". Empty for an id that is not a site's.
[[nodiscard]] QString describeSite(const zelengine::ReferenceEngine& engine, int id);

} // namespace mirn::zelchip
