// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace mirn::zelchip {

// The program's own palettes: one of them is chosen by the desktop's.
[[nodiscard]] QPalette lightPalette();
[[nodiscard]] QPalette darkPalette();

// Whether its texts are lighter than what they stand on.
[[nodiscard]] bool isDark(const QPalette& palette);

// Returns the palette for what stands on a drawing, in a window with this palette: drawings are made for light paper,
// and keep their colours. Its background is what surrounds the drawing, light enough for dark lines in a dark window
// too.
[[nodiscard]] QPalette drawingPalette(const QPalette& window);

} // namespace mirn::zelchip
