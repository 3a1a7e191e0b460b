// SPDX-License-Identifier: MIT
#include "graphics/elements/layervisibility.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

// Prevents rounding error from counting a whole number of steps one short.
constexpr double StepTolerance = 1e-9;

constexpr double LargestCount = 1e9; // zoom steps

} // namespace

QList<int> visibleLayersAt(const std::map<int, RangeScale>& ranges, double scale)
{
    QList<int> layers;
    for (const auto& [layer, range] : ranges) {
        if (!(scale < range.minimum) && !(scale > range.maximum))
            layers.append(layer);
    }
    return layers;
}

int wholeZoomSteps(double factor, double step)
{
    if (!(step > 0) || !(factor > 0))
        return 0;
    const double steps = std::clamp(std::log(factor) / std::log(1 + step), -LargestCount, LargestCount);
    return steps < 0 ? -static_cast<int>(-steps + StepTolerance) : static_cast<int>(steps + StepTolerance);
}

} // namespace mirn::zelchipview
