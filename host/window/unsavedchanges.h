// SPDX-License-Identifier: MIT
#pragma once

class QWidget;

namespace mirn::zelchip {

class DesignEditor;

// Call it before a design is closed: if it has unsaved changes, this asks whether to save or to discard them, and does
// so. Returns false if the user cancels or if that fails; a failure is shown.
[[nodiscard]] bool confirmClose(DesignEditor& editor, QWidget* parent);

} // namespace mirn::zelchip
