// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace zelsvg {

// How texts will run when they are drawn, near enough to place them. The drawing's own fonts may not be at hand where
// it is shown, so these are the measures of one common sans-serif font, DejaVu Sans, at a font size of 1.
[[nodiscard]] double textAdvance(std::string_view latin1);

constexpr double TextAscent = 0.928;
constexpr double TextDescent = 0.236;
constexpr double TextXHeight = 0.547;
constexpr double TextCapHeight = 0.729;

} // namespace zelsvg
