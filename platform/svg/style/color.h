// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace mirn::zelsvg {

// A colour with an opacity.
struct Color
{
    unsigned int rgb = 0; // 0xRRGGBB
    double alpha = 1.0; // 0 to 1
};

// Reads all CSS forms of a colour except currentColor, which only the caller knows. Returns false, with `color`
// unchanged, for anything else.
bool parseColor(std::string_view text, Color& color);

// Returns `rgb` blended over white with the given opacity.
[[nodiscard]] unsigned int blendedWithWhite(unsigned int rgb, double alpha);

} // namespace mirn::zelsvg
