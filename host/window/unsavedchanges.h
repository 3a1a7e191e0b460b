// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace mirn::zelchip {

class DesignEditor;

// Before a design is left: when it has changes that were not saved, asks whether to save or to drop them, and does so.
// False when the user wants to stay, or when saving failed, which is shown.
[[nodiscard]] bool mayLeave(DesignEditor& editor, QWidget* parent);

} // namespace mirn::zelchip
