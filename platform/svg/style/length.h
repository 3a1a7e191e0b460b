// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;

// The size of the nearest viewport in its own user units, for percentages.
struct ViewportSize
{
    double width = 0.0;
    double height = 0.0;
};

enum class LengthAxis { Horizontal, Vertical, Diagonal };

// The references of relative units.
struct LengthContext
{
    double fontSize = 16.0;
    ViewportSize viewport;

    [[nodiscard]] double percentBase(LengthAxis axis) const;
};

// Returns the size of an absolute unit in user units (1 px = 1 user unit, 96 px = 1 inch); 0 for any other unit,
// including em, ex and %.
[[nodiscard]] double absoluteUnit(std::string_view unit);

// Reads "12", "12px", "3mm", "1.5em", "50%" and the like. Returns false for anything else; warns about it unless it is
// empty or "auto".
bool parseLength(
    std::string_view text, const LengthContext& context, LengthAxis axis, Diagnostics& diagnostics, double& value);

void warnOfNegative(Diagnostics& diagnostics);

// Does the same as parseLength() for a size: a negative one is refused with a warning, and `value` is unchanged.
inline bool parseSize(
    std::string_view text, const LengthContext& context, LengthAxis axis, Diagnostics& diagnostics, double& value)
{
    const double otherwise = value;
    if (!parseLength(text, context, axis, diagnostics, value))
        return false;
    if (value >= 0.0)
        return true;
    value = otherwise;
    warnOfNegative(diagnostics);
    return false;
}

} // namespace mirn::zelsvg
