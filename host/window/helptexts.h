// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchip {

// Rich text for the help menu's boxes.
[[nodiscard]] QString keysAndGestures();
[[nodiscard]] QString aboutText();

} // namespace mirn::zelchip
