// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {
class ReferenceEngine;
struct Site;
} // namespace mirn::zelengine

namespace mirn::zelchip {

// Returns the site's place in the device's own terms, the larger part first: "DCU1 > CH0" for the site DCU1_CH0 of the
// group DCU1. A name that ends in R4C1 is shown as row and column.
[[nodiscard]] QString placeOf(const zelengine::Site& site);

// Returns one line for a person who does not see the site: its name, kind, state and occupant, as in "PLL_TL0, PLL,
// occupied by top/core, which is fixed". Empty for an id that is not a site's.
[[nodiscard]] QString describeSite(const zelengine::ReferenceEngine& engine, int id);

} // namespace mirn::zelchip
