// SPDX-License-Identifier: MIT
#include "host/dialogs/refusedlines.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace mirn::zelchip {

namespace {

constexpr QSize RefusedLinesSize(720, 360); // device-independent pixels

} // namespace

void openRefusedLines(QWidget* parent, const QString& title, const QString& summary, const QStringList& lines)
{
    auto* dialog = new QDialog(parent); // deletes itself
    dialog->setObjectName(QStringLiteral("refusedLines"));
    dialog->setWindowTitle(title);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    auto* list = new QPlainTextEdit(lines.join(QLatin1Char('\n')), dialog);
    list->setReadOnly(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, dialog);
    QObject::connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
    auto* layout = new QVBoxLayout(dialog);
    layout->addWidget(new QLabel(summary, dialog));
    layout->addWidget(list);
    layout->addWidget(buttons);
    dialog->resize(RefusedLinesSize);
    dialog->open();
}

} // namespace mirn::zelchip
