// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {
struct Site;
}

namespace mirn::zelchip {

// Returns the site's place in the device's own terms, the larger part first: "DCU1 > CH0" for the site DCU1_CH0 of the
// group DCU1. A name that ends in R4C1 is shown as row and column.
[[nodiscard]] QString placeOf(const zelengine::Site& site);

} // namespace mirn::zelchip
