// SPDX-License-Identifier: MIT
#include "host/snapshot.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImageWriter>
#include <QPixmap>
#include <QSaveFile>
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
    QSaveFile output(file);
    if (!output.open(QIODevice::WriteOnly)) {
        *error = cannotWrite(file, output.errorString());
        return false;
    }
    QImageWriter writer(&output, format);
    if (!writer.write(window.grab().toImage())) {
        *error = cannotWrite(file, writer.errorString());
        return false;
    }
    if (!output.commit()) {
        *error = cannotWrite(file, output.errorString());
        return false;
    }
    return true;
}

} // namespace mirn::zelchip
