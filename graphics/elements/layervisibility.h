// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"

#include <QList>

#include <map>

namespace mirn::zelchipview {

// Returns the layers that are shown at a scale value, in ascending order. Both ends of a range belong to it; a
// comparison with NaN never hides a layer.
[[nodiscard]] QList<int> visibleLayersAt(const std::map<int, RangeScale>& ranges, double scale);

} // namespace mirn::zelchipview
