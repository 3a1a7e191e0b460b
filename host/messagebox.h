// SPDX-License-Identifier: MIT
#pragma once

#include <QMessageBox>

namespace mirn::zelchip {

// Opens a message box that deletes itself and does not hold up whoever opens it.
void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format);

} // namespace mirn::zelchip
