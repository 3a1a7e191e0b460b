// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zelchip {

// Sets the program's style and colours, the same on every desktop, and on the offscreen platform, which has no desktop
// settings, also its font.
void applyTheme();

} // namespace mirn::zelchip
