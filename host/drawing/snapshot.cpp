// SPDX-License-Identifier: MIT
#include "host/drawing/snapshot.h"

#include "host/design/filereplacement.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QImageWriter>
#include <QPixmap>
#include <QWidget>

namespace mirn::zelchip {

namespace {

QString cannotWrite(const QString& file, const QString& reason)
{
    return QCoreApplication::translate("Snapshot", "%1: the image cannot be written: %2").arg(file, reason);
}

} // namespace

bool saveSnapshot(QWidget& window, const QString& file, QString* error)
{
    QByteArray format = QFileInfo(file).suffix().toLower().toLatin1();
    if (format.isEmpty())
        format = "png";
    if (!QImageWriter::supportedImageFormats().contains(format)) {
        *error = cannotWrite(file,
            QCoreApplication::translate("Snapshot", "'%1' is no known image format; use .png")
                .arg(QString::fromLatin1(format)));
        return false;
    }
    QBuffer image;
    image.open(QIODevice::WriteOnly);
    QImageWriter writer(&image, format);
    if (!writer.write(window.grab().toImage())) {
        *error = cannotWrite(file, writer.errorString());
        return false;
    }
    const FileReplacement replacement = replaceFile(file, image.data());
    if (!replacement.error.isEmpty())
        *error = cannotWrite(file, replacement.error);
    return replacement.error.isEmpty();
}

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
