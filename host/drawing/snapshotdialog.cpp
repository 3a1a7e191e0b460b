// SPDX-License-Identifier: MIT
#include "host/drawing/snapshotdialog.h"

#include <QCoreApplication>
#include <QFileDialog>

namespace mirn::zelchip {

QString chooseSnapshotFile(QWidget* parent, const QString& folder)
{
    QFileDialog dialog(parent, QCoreApplication::translate("Snapshot", "Save Snapshot"), folder);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters({QCoreApplication::translate("Snapshot", "Images (*.png *.jpg *.jpeg *.bmp)"),
        QCoreApplication::translate("Snapshot", "All files (*)")});
    dialog.setDefaultSuffix(QStringLiteral("png"));
    dialog.selectFile(QStringLiteral("zelchip.png"));
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

} // namespace mirn::zelchip
