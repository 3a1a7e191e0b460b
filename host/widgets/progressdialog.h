// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QProgressDialog;
class QWidget;

namespace mirn::zelchip {

constexpr int ProgressDialogEnd = 1000; // its values go from 0 to this

// Returns a modal dialog for work that takes longer than a moment. A click on Cancel emits canceled() and does no more:
// the dialog stays until the work has been undone. Without a parent it is a top-level window.
[[nodiscard]] std::unique_ptr<QProgressDialog> newProgressDialog(QWidget* parent);

} // namespace mirn::zelchip
