// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace mirn::zelsvg {

// The approximate width of a text, good enough to place it. The drawing's own fonts may be missing where it is shown,
// so these are the metrics of a common sans-serif font, DejaVu Sans, at a font size of 1.
[[nodiscard]] double textAdvance(std::string_view latin1);

constexpr double TextAscent = 0.928;
constexpr double TextDescent = 0.236;
constexpr double TextXHeight = 0.547;
constexpr double TextCapHeight = 0.729;

} // namespace mirn::zelsvg
