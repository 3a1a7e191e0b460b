// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace mirn::zelchip {

// Opens the reference of all commands beside the parent, which can be used meanwhile, or brings it to the front. It
// deletes itself when it is closed.
void openCommandsWindow(QWidget* parent);

} // namespace mirn::zelchip
