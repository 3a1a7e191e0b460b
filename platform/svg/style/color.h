// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace zelsvg {

// A colour with its opacity.
struct Color
{
    unsigned int rgb = 0; // 0xRRGGBB
    double alpha = 1.0; // 0 to 1
};

// Reads every CSS form of a colour but currentColor, which is the caller's to know. False, with `color` unchanged, for
// anything else.
bool parseColor(std::string_view text, Color& color);

// `rgb` as it looks over white with the given opacity.
[[nodiscard]] unsigned int blendedWithWhite(unsigned int rgb, double alpha);

} // namespace zelsvg
