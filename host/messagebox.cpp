// SPDX-License-Identifier: MIT
#include "host/messagebox.h"

namespace mirn::zelchip {

void openMessageBox(
    QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text, Qt::TextFormat format)
{
    auto* box = new QMessageBox(icon, title, text, QMessageBox::Close, parent);
    box->setTextFormat(format);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

} // namespace mirn::zelchip
