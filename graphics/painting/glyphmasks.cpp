// SPDX-License-Identifier: MIT
#include "graphics/painting/glyphmasks.h"

#include "graphics/painting/rasteriser.h"

#include <QGlyphRun>
#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

constexpr int Margin = 3; // pixels around a glyph's outline: smoothing and hinting

// QPainter takes positions in 1/64 of a pixel, chooses the nearest quarter to the left, and rounds lines to whole
// pixels.
constexpr int PositionUnit = 64;
constexpr int PhaseBits = 2;

struct PixelPosition
{
    PixelPosition(double x, double y)
        : quarters((static_cast<int>(std::floor(x * PositionUnit)) + 1) >> 4)
        , row(static_cast<int>(std::floor(y + 0.5)))
    { }

    [[nodiscard]] int column() const { return quarters >> PhaseBits; }
    [[nodiscard]] int phase() const { return quarters & ((1 << PhaseBits) - 1); }

    int quarters;
    int row;
};

// Black on white: what is missing to white is the coverage.
std::uint8_t coverageOf(QRgb pixel)
{
    return static_cast<std::uint8_t>(255 - qRed(pixel));
}

const QRgb* lineOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// The part of the image that is not white.
QRect coveredPart(const QImage& image)
{
    QRect covered;
    for (int y = 0; y < image.height(); ++y) {
        const QRgb* line = lineOf(image, y);
        for (int x = 0; x < image.width(); ++x) {
            if (coverageOf(line[x]) != 0)
                covered |= QRect(x, y, 1, 1);
        }
    }
    return covered;
}

} // namespace

GlyphMasks::GlyphMasks(TextLabels& labels)
    : m_labels(labels)
{ }

void GlyphMasks::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    m_masks.clear();
    m_coverage.clear();
}

bool GlyphMasks::isReadyFor(const TextLabel& label, double x, double y) const
{
    const auto isMade = [&](const PlacedGlyph& glyph) {
        const PixelPosition position(m_scale * glyph.x + x, m_scale * glyph.y + y);
        const std::size_t index = static_cast<std::size_t>(glyph.number) * Phases + position.phase();
        return index < m_masks.size() && m_masks[index].isMade;
    };
    return label.isShaped && std::all_of(label.glyphs.begin(), label.glyphs.end(), isMade);
}

void GlyphMasks::draw(TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser)
{
    m_labels.shape(label);
    for (const PlacedGlyph& glyph : label.glyphs) {
        const PixelPosition position(m_scale * glyph.x + x, m_scale * glyph.y + y);
        const Mask& shape = mask(glyph.number, position.phase());
        if (shape.width > 0)
            rasteriser.drawMask({position.column() + shape.left, position.row + shape.top, shape.width, shape.height,
                                    m_coverage.data() + shape.coverage},
                color);
    }
}

const GlyphMasks::Mask& GlyphMasks::mask(int glyph, int phase)
{
    const std::size_t index = static_cast<std::size_t>(glyph) * Phases + phase;
    if (index >= m_masks.size())
        m_masks.resize(static_cast<std::size_t>(m_labels.glyphCount()) * Phases);
    Mask& found = m_masks[index];
    if (!found.isMade)
        make(found, glyph, phase);
    return found;
}

void GlyphMasks::make(Mask& mask, int glyph, int phase)
{
    mask.isMade = true;
    const TextLabels::Glyph& which = m_labels.glyph(glyph);
    const QRawFont& font = m_labels.font(which.font);
    const QRectF outline = font.boundingRect(which.index);
    const QRect area = QRectF(outline.topLeft() * m_scale, outline.size() * m_scale)
                           .toAlignedRect()
                           .adjusted(-Margin, -Margin, Margin, Margin);
    QImage image(area.size(), QImage::Format_RGB32);
    if (image.isNull())
        return;
    image.fill(Qt::white);
    QGlyphRun run;
    run.setRawFont(font);
    run.setGlyphIndexes({which.index});
    run.setPositions({QPointF()});
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setTransform(QTransform(m_scale, 0, 0, m_scale, -area.left() + phase / double(Phases), -area.top()));
    painter.setPen(Qt::black);
    painter.drawGlyphRun(QPointF(), run);
    painter.end();

    const QRect covered = coveredPart(image);
    mask.left = static_cast<std::int16_t>(covered.left() + area.left());
    mask.top = static_cast<std::int16_t>(covered.top() + area.top());
    mask.width = static_cast<std::int16_t>(CoverageMask::paddedWidth(covered.width()));
    mask.height = static_cast<std::int16_t>(covered.height());
    mask.coverage = m_coverage.size();
    for (int y = covered.top(); y <= covered.bottom(); ++y) {
        const QRgb* line = lineOf(image, y);
        for (int x = covered.left(); x <= covered.right(); ++x)
            m_coverage.push_back(coverageOf(line[x]));
        m_coverage.insert(m_coverage.end(), mask.width - covered.width(), 0);
    }
}

} // namespace mirn::zelchipview
