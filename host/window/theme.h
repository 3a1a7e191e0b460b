// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zelchip {

// The look of the program, the same on every desktop: style and colours, and on the offscreen platform, which knows no
// desktop, the font too.
void applyTheme();

} // namespace mirn::zelchip
