// SPDX-License-Identifier: MIT
#include "graphics/painting/text/glyphpicture.h"

#include "graphics/painting/raster/picturedevice.h"

#include <QGlyphRun>
#include <QPainter>
#include <QRawFont>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

constexpr int Margin = 3; // pixels around a glyph's outline, for antialiasing and hinting
constexpr double SampleSize = 12.0; // pixels; QPainter draws large glyphs as outlines

bool isGrey(const QImage& image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        if (!std::all_of(line, line + image.width(), [](QRgb pixel) { return qIsGray(pixel); }))
            return false;
    }
    return true;
}

} // namespace

GlyphPicture glyphPicture(const QRawFont& font, quint32 glyph, double scale, int positions)
{
    const QRectF outline = font.boundingRect(glyph);
    const QRect area = QRectF(outline.topLeft() * scale, outline.size() * scale)
                           .toAlignedRect()
                           .adjusted(-Margin, -Margin, Margin, Margin);
    const QSize all(area.width() * positions, area.height());
    GlyphPicture made{QImage(all, QImage::Format_RGB32), area.width(), -area.topLeft()};
    if (made.image.isNull())
        return made;
    made.image.fill(Qt::white);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes({glyph});
    run.setPositions({QPointF()});
    PictureDevice device(&made.image);
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::black);
    for (int n = 0; n < positions; ++n) {
        const double x = made.origin.x() + n * made.width + double(n) / positions;
        painter.setTransform(QTransform(scale, 0, 0, scale, x, made.origin.y()));
        painter.drawGlyphRun(QPointF(), run);
    }
    return made;
}

bool hasUsualGlyphs(const QRawFont& font, quint32 glyph)
{
    // A glyph with a round outline shows the difference; others may look right by chance.
    const auto round = font.glyphIndexesForString(QStringLiteral("o"));
    const quint32 sample = round.isEmpty() || round.first() == 0 ? glyph : round.first();
    const double scale = SampleSize / std::max(1.0, font.pixelSize());
    const GlyphPicture two = glyphPicture(font, sample, scale, 2);
    const QSize size(two.width, two.image.height());
    return isGrey(two.image)
        && two.image.copy(QRect(QPoint(), size)) != two.image.copy(QRect(QPoint(two.width, 0), size));
}

} // namespace mirn::zelchipview
