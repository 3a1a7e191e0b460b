// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace zelsvg {

class Diagnostics;

// The nearest viewport in its own user units, for percentages.
struct ViewportSize
{
    double width = 0.0;
    double height = 0.0;
};

enum class LengthAxis { Horizontal, Vertical, Diagonal };

// What relative units refer to.
struct LengthContext
{
    double fontSize = 16.0;
    ViewportSize viewport;

    [[nodiscard]] double percentBase(LengthAxis axis) const;
};

// Units of a length that is not resolved against anything (1 px = 1 user unit, 96 to the inch): 0 for an unknown unit,
// em, ex and % included.
[[nodiscard]] double absoluteUnit(std::string_view unit);

// Reads "12", "12px", "3mm", "1.5em", "50%" ... False for anything else, an empty text and "auto" included; text that
// is none of these two is warned of.
bool parseLength(
    std::string_view text, const LengthContext& context, LengthAxis axis, Diagnostics& diagnostics, double& value);

void warnOfNegative(Diagnostics& diagnostics);

// As parseLength(), for a size, which is not to be negative: one that is is warned of and none.
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

} // namespace zelsvg
