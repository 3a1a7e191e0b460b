// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

#include <functional>

namespace mirn::zelchip {

// Opens a message box that deletes itself and does not hold up whoever opens it.
void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format);

// Asks whether a project is to be taken over whose lock is in doubt, and calls the function if so. Does not hold up
// whoever opens it.
void openTakeOverQuestion(QWidget* parent, const QString& doubt, const std::function<void()>& takeOver);

} // namespace mirn::zelchip
