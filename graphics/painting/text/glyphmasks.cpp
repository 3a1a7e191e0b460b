// SPDX-License-Identifier: MIT
#include "graphics/painting/text/glyphmasks.h"

#include "graphics/painting/raster/rasteriser.h"
#include "graphics/painting/text/glyphpicture.h"

#include <QImage>

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

// QPainter measures positions in 1/64 of a pixel, takes the nearest quarter of a pixel to the left, and rounds base
// lines to whole pixels.
constexpr int PositionUnit = 64;
constexpr int PhaseBits = 2;

struct PixelPosition
{
    PixelPosition(double x, double y)
        : quarters((static_cast<int>(x * PositionUnit) + 1) >> 4)
        , row(static_cast<int>(std::floor(y + 0.5)))
    { }

    [[nodiscard]] int column() const { return quarters >> PhaseBits; }
    [[nodiscard]] int phase() const { return quarters & ((1 << PhaseBits) - 1); }

    int quarters;
    int row;
};

// The glyph is black on white, so its coverage is the difference from white.
std::uint8_t coverageOf(QRgb pixel)
{
    return static_cast<std::uint8_t>(255 - qRed(pixel));
}

const QRgb* lineOf(const QImage& image, int y)
{
    return reinterpret_cast<const QRgb*>(image.constScanLine(y));
}

// Returns what is not white in a part of the image.
QRect coveredPart(const QImage& image, const QRect& part)
{
    QRect covered;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        const QRgb* line = lineOf(image, y);
        const auto isCovered = [line](int x) { return coverageOf(line[x]) != 0; };
        int first = part.left();
        while (first <= part.right() && !isCovered(first))
            ++first;
        int last = part.right();
        while (last > first && !isCovered(last))
            --last;
        if (first <= last)
            covered |= QRect(QPoint(first, y), QPoint(last, y));
    }
    return covered;
}

} // namespace

GlyphMasks::GlyphMasks(TextShaper& shaper)
    : m_shaper(shaper)
{ }

void GlyphMasks::clear()
{
    m_masks.clear();
    m_coverage.clear();
}

void GlyphMasks::setScale(double scale)
{
    if (scale == m_scale)
        return;
    m_scale = scale;
    clear();
}

bool GlyphMasks::isReadyFor(const TextLabel& label, double x, double y) const
{
    const ShapedText* text = m_shaper.find(label);
    const auto isMade = [&](const PlacedGlyph& glyph) {
        const PixelPosition position(m_scale * glyph.x + x, m_scale * glyph.y + y);
        const std::size_t index = static_cast<std::size_t>(glyph.number) * Phases + position.phase();
        return index < m_masks.size() && m_masks[index].isMade;
    };
    return text && std::all_of(text->glyphs.begin(), text->glyphs.end(), isMade);
}

bool GlyphMasks::draw(const TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser)
{
    const ShapedText& text = m_shaper.shape(label);
    if (!text.isUsual)
        return false;
    for (const PlacedGlyph& glyph : text.glyphs) {
        const PixelPosition position(m_scale * glyph.x + x, m_scale * glyph.y + y);
        draw(mask(glyph.number, position.phase()), position.column(), position.row, color, rasteriser);
    }
    return true;
}

bool GlyphMasks::drawReady(const TextLabel& label, double x, double y, QRgb color, Rasteriser& rasteriser) const
{
    if (!isReadyFor(label, x, y))
        return false;
    const ShapedText& text = *m_shaper.find(label);
    if (!text.isUsual)
        return false;
    for (const PlacedGlyph& glyph : text.glyphs) {
        const PixelPosition position(m_scale * glyph.x + x, m_scale * glyph.y + y);
        draw(m_masks[static_cast<std::size_t>(glyph.number) * Phases + position.phase()], position.column(),
            position.row, color, rasteriser);
    }
    return true;
}

void GlyphMasks::draw(const Mask& mask, int column, int row, QRgb color, Rasteriser& rasteriser) const
{
    if (mask.width > 0)
        rasteriser.drawMask(
            {column + mask.left, row + mask.top, mask.width, mask.height, m_coverage.data() + mask.coverage}, color);
}

void GlyphMasks::makeAll()
{
    for (int glyph = 0; glyph < m_shaper.glyphCount(); ++glyph) {
        for (int phase = 0; phase < Phases; ++phase)
            (void)mask(glyph, phase);
    }
}

const GlyphMasks::Mask& GlyphMasks::mask(int glyph, int phase)
{
    const std::size_t index = static_cast<std::size_t>(glyph) * Phases + phase;
    if (index >= m_masks.size())
        m_masks.resize(static_cast<std::size_t>(m_shaper.glyphCount()) * Phases);
    if (!m_masks[index].isMade)
        make(glyph);
    return m_masks[index];
}

// Makes the masks of all phases, for starting a painter takes longer than drawing one.
void GlyphMasks::make(int glyph)
{
    const TextShaper::Glyph& which = m_shaper.glyph(glyph);
    const GlyphPicture picture = glyphPicture(m_shaper.rawFont(which.font), which.index, m_scale, Phases);
    for (int phase = 0; phase < Phases; ++phase) {
        Mask& mask = m_masks[static_cast<std::size_t>(glyph) * Phases + phase];
        mask.isMade = true;
        const QRect part(phase * picture.width, 0, picture.width, picture.image.height());
        take(mask, picture.image, part, picture.origin + part.topLeft());
    }
}

// `origin` is the pixel of the glyph's origin.
void GlyphMasks::take(Mask& mask, const QImage& image, const QRect& part, QPoint origin)
{
    const QRect covered = coveredPart(image, part);
    if (covered.isEmpty())
        return;
    mask.left = static_cast<std::int16_t>(covered.left() - origin.x());
    mask.top = static_cast<std::int16_t>(covered.top() - origin.y());
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
