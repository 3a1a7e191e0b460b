// SPDX-License-Identifier: MIT
#pragma once

#include "planning/sentence.h"

#include <QMessageBox>

#include <functional>

namespace mirn::zelchip {

class DesignEditor;

using zelchipview::asSentence;

// Opens a message box that deletes itself, and returns at once.
void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format);

// Says what went wrong, in the same way. The text, which may begin with a small letter, is shown as it is written.
void openErrorBox(QWidget* parent, const QString& text);

// Asks whether to take over a project whose lock is in doubt, and calls the function if the user agrees. Returns at
// once.
void openTakeOverQuestion(QWidget* parent, const QString& doubt, const std::function<void()>& takeOver);

// Call it before a design is closed: if it has unsaved changes, this asks whether to save or to discard them, and does
// so. Returns false if the user cancels or if saving fails; a failure is shown. Changes that cannot be discarded stay
// in the journal, which is said, and the user can leave.
[[nodiscard]] bool confirmClose(DesignEditor& editor, QWidget* parent);

} // namespace mirn::zelchip
