// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

#include <functional>

namespace mirn::zelchip {

// Opens a message box that deletes itself, and returns at once.
void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format);

// Asks whether to take over a project whose lock is in doubt, and calls the function if the user agrees. Returns at
// once.
void openTakeOverQuestion(QWidget* parent, const QString& doubt, const std::function<void()>& takeOver);

} // namespace mirn::zelchip
