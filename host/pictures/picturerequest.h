// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zeldrawingpicture.h"

#include <QSizeF>
#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// What picture of the drawing is to be written, and where.
struct PictureRequest
{
    enum class Format { Pdf, Svg, Png };
    using Part = zelchipview::ZelDrawingPicture::Part;

    // The suffixes in the order of the formats; the suffix of a file decides which one it is.
    [[nodiscard]] static const QStringList& suffixes();
    // The words of the parts, in their order, for commands.
    [[nodiscard]] static const QStringList& parts();

    // These return an empty text, or a sentence that says what is wrong. The size is a text such as "1600x1000".
    [[nodiscard]] QString setFile(const QString& name);
    [[nodiscard]] QString setPart(const QString& word);
    [[nodiscard]] QString setOverlays(const QString& digit);
    [[nodiscard]] QString setSize(const QString& text);

    // The same for the size in the format that it has by then; empty stands for that of the view and is right.
    [[nodiscard]] QString sizeError() const;

    QString file;
    Format format = Format::Pdf;
    Part part = Part::Whole;
    bool hasOverlays = true;
    QSizeF size; // millimetres for PDF, else pixels; empty stands for that of the view
};

} // namespace mirn::zelchip
