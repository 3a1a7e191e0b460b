// SPDX-License-Identifier: MIT
#include "host/pictures/picturerequest.h"

#include "host/tcl/translation.h"

#include <QFileInfo>

namespace mirn::zelchip {

namespace {

constexpr double SmallestPage = 10; // millimetres
constexpr double LargestPage = 5000; // a page of PDF ends at 5080
constexpr double LargestSvg = 100000; // pixels
constexpr double LargestPngSide = 32767; // where Qt's software renderer ends
constexpr double MostPngPixels = 375e6; // 1.5 gigabytes of four bytes each
constexpr double BytesPerPixel = 4;
constexpr double Gigabyte = 1e9;

bool isWithin(const QSizeF& size, double least, double most)
{
    return size.width() >= least && size.height() >= least && size.width() <= most && size.height() <= most;
}

QString pngSizeError(const QSizeF& size)
{
    const double pixels = size.width() * size.height();
    if (size != size.toSize() || !isWithin(size, 1, LargestPngSide))
        return tr("the sides of a PNG picture are 1 to 32767 whole pixels");
    if (pixels <= MostPngPixels)
        return {};
    return tr("%1 million pixels would need %2 GB of memory; a PNG picture has 375 million at most")
        .arg(QString::number(pixels / 1e6, 'f', 0), QString::number(pixels * BytesPerPixel / Gigabyte, 'f', 1));
}

} // namespace

const QStringList& PictureRequest::suffixes()
{
    static const QStringList Suffixes{QStringLiteral("pdf"), QStringLiteral("svg"), QStringLiteral("png")};
    return Suffixes;
}

const QStringList& PictureRequest::parts()
{
    static const QStringList Parts{QStringLiteral("whole"), QStringLiteral("visible")};
    return Parts;
}

QString PictureRequest::setFile(const QString& name)
{
    const int which = static_cast<int>(suffixes().indexOf(QFileInfo(name).suffix().toLower()));
    if (which < 0)
        return tr("%1: the file's suffix decides the format: .pdf, .svg or .png").arg(name);
    file = name;
    format = static_cast<Format>(which);
    return {};
}

QString PictureRequest::setPart(const QString& word)
{
    const int which = static_cast<int>(parts().indexOf(word));
    if (which < 0)
        return tr("'%1' is no part of the drawing; it is whole or visible").arg(word);
    part = static_cast<Part>(which);
    return {};
}

QString PictureRequest::setOverlays(const QString& digit)
{
    if (digit != QLatin1String("0") && digit != QLatin1String("1"))
        return tr("'%1' is neither 0 nor 1").arg(digit);
    hasOverlays = digit == QLatin1String("1");
    return {};
}

QString PictureRequest::setSize(const QString& text)
{
    const QStringList sides = text.split(QLatin1Char('x'));
    bool isWidth = false;
    bool isHeight = false;
    size = QSizeF(sides.value(0).toDouble(&isWidth), sides.value(1).toDouble(&isHeight));
    if (sides.size() != 2 || !isWidth || !isHeight || !(size.width() > 0) || !(size.height() > 0))
        return tr("'%1' is no size; it is a width and a height, such as 1600x1000").arg(text);
    return {};
}

QString PictureRequest::sizeError() const
{
    if (size.isEmpty())
        return {};
    switch (format) {
    case Format::Pdf:
        return isWithin(size, SmallestPage, LargestPage) ? QString() : tr("the sides of a PDF page are 10 to 5000 mm");
    case Format::Svg:
        return isWithin(size, 1, LargestSvg) ? QString() : tr("the sides of an SVG picture are 1 to 100000 pixels");
    case Format::Png:
        break;
    }
    return pngSizeError(size);
}

} // namespace mirn::zelchip
