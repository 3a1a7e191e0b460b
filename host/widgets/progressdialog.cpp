// SPDX-License-Identifier: MIT
#include "host/widgets/progressdialog.h"

#include "host/tcl/translation.h"

#include <QProgressDialog>

namespace mirn::zelchip {

namespace {

constexpr int ProgressDialogWidth = 420;

} // namespace

std::unique_ptr<QProgressDialog> newProgressDialog(QWidget* parent)
{
    auto dialog = std::make_unique<QProgressDialog>(parent);
    dialog->setWindowTitle(tr("zelchip"));
    dialog->setWindowModality(parent ? Qt::WindowModal : Qt::ApplicationModal);
    dialog->setRange(0, ProgressDialogEnd);
    dialog->setMinimumDuration(0);
    dialog->setAutoClose(false);
    dialog->setAutoReset(false);
    dialog->setFixedWidth(ProgressDialogWidth);
    QObject::disconnect(dialog.get(), SIGNAL(canceled()), dialog.get(), SLOT(cancel()));
    return dialog;
}

} // namespace mirn::zelchip
