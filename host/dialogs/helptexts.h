// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchip {

// The rich texts of the dialogs in the help menu.
[[nodiscard]] QString keysAndGestures();
[[nodiscard]] QString aboutText();

} // namespace mirn::zelchip
