// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"

#include <QList>

#include <map>

namespace mirn::zelchipview {

// Returns the layers that are shown at a scale value, in ascending order. Both ends of a range belong to it; a
// comparison with NaN never hides a layer.
[[nodiscard]] QList<int> visibleLayersAt(const std::map<int, RangeScale>& ranges, double scale);

// Returns how many whole zoom steps lead from 1 to a factor of the transform, rounded towards 0; negative for a factor
// below 1. 0 if there are no steps, or for a factor that none lead to.
[[nodiscard]] int wholeZoomSteps(double factor, double step);

} // namespace mirn::zelchipview
