// SPDX-License-Identifier: MIT
#include "platform/svg/reading/zoomlimits.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

struct Window
{
    double width; // pixels
    double height;
};

constexpr Window Smallest{300, 200};
constexpr Window Largest{4000, 2500};
constexpr double Detail = 64;

// Returns the transform scale at which the whole drawing just fits.
[[nodiscard]] double fittingScale(const zel_Parameter& parameter, Window window)
{
    constexpr double LargestScale = 1e15;
    return std::min({window.width / parameter.width, window.height / parameter.height, LargestScale});
}

[[nodiscard]] double steps(const zel_Parameter& parameter, double scale)
{
    constexpr double Most = 1e15; // the step may be tiny
    return std::clamp(std::log(scale) / std::log1p(parameter.scaleStep), -Most, Most);
}

} // namespace

// The scale value counts steps from the unscaled view. That view is at 1 after the view has been fitted to an area, and
// at the initial scale after a reset; right after loading, the view is scaled already. The limits cover all three
// cases, with one more step for rounding and for the margin around an area.
void completeZoomLimits(zel_Parameter& parameter, GivenLimits given)
{
    const zel_Parameter defaults;
    const double initial = parameter.initialScale;
    const double loaded = initial - steps(parameter, initial) * parameter.scaleStep;
    const auto [lowest, highest] = std::minmax({1.0, initial, loaded});
    const double least = std::floor(steps(parameter, fittingScale(parameter, Smallest))) - 1.0;
    const double most = std::ceil(steps(parameter, fittingScale(parameter, Largest) * Detail)) + 1.0;
    if (!given.minimum)
        parameter.minimumScale = std::min({defaults.minimumScale, initial, lowest + least * parameter.scaleStep,
            given.maximum ? parameter.maximumScale : defaults.minimumScale});
    if (!given.maximum)
        parameter.maximumScale
            = std::max({defaults.maximumScale, initial, parameter.minimumScale, highest + most * parameter.scaleStep});
}

} // namespace mirn::zelsvg
