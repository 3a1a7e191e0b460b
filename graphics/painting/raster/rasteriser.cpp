// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/rasteriser_pixels.h"

#include <cmath>
#include <cstring>

// These rules for rects were found by observing what QPainter draws at all sub-pixel positions, and a test compares the
// two. Lengths are measured in 1/65536 of a pixel. Where two ways to compute a number differ only in its last bit, the
// code takes the one that agrees with QPainter's rounding: at whole pixels that bit is visible.

namespace mirn::zelchipview {

using namespace pixel;

namespace {

constexpr double SmallestSide = 1.0 / 64; // in pixels; a rect with a shorter side is not drawn

} // namespace

Rasteriser::Rasteriser(QImage& image, const QRect& clip, const Mapping& mapping, Instructions instructions)
    : m_hasAvx2(instructions != Instructions::Basic && ZEL_HAS_AVX2)
    , m_hasAvx512(instructions == Instructions::Fastest && ZEL_HAS_AVX512)
    , m_bits(image.bits())
    , m_bytesPerLine(image.bytesPerLine())
    , m_size(image.size())
    , m_clip(clip & image.rect())
    , m_clipArea{double(m_clip.left()), double(m_clip.top()), double(m_clip.right() + 1), double(m_clip.bottom() + 1)}
    , m_mapping(mapping)
    , m_pixel(1 / mapping.scale)
{ }

// Blends four columns at a time, whether or not the rect covers them: in a rect of a few pixels a mispredicted branch
// costs more than two pixels.
ZEL_INLINE void Rasteriser::fillSmallRect(const Extent& across, const Extent& down, QRgb color)
{
    const PairChannels channels = pixelpair::ofColor(color);
    const std::int64_t firstHeight = down.partOf(down.first);
    const std::int64_t lastHeight = down.partOf(down.last);
    for (int x = across.first; x <= across.last; x += ColumnsAtOnce) {
        std::int64_t coverage[ColumnsAtOnce];
        for (int i = 0; i < ColumnsAtOnce; ++i)
            coverage[i] = std::max<std::int64_t>(across.partOf(x + i), 0) * 255;
        const auto blendOf = [&](std::int64_t height) {
            const auto weighted = [&](int i) { return static_cast<unsigned>(((height * coverage[i]) >> 16) >> 16); };
            return QuadBlend(
                channels, pixelpair::of(weighted(0), weighted(1)), pixelpair::of(weighted(2), weighted(3)));
        };
        blendOf(firstHeight).apply(row(down.first) + x);
        if (down.first == down.last)
            continue;
        const QuadBlend whole = blendOf(One);
        for (int y = down.first + 1; y < down.last; ++y)
            whole.apply(row(y) + x);
        blendOf(lastHeight).apply(row(down.last) + x);
    }
}

ZEL_INLINE void Rasteriser::fillLargeRect(const Extent& across, const Extent& down, QRgb color)
{
    const int lastRow = std::min(down.last, m_clip.bottom());
    const int lastWhole = std::min(across.last - 1, m_clip.right());
    const std::int64_t first = across.partOf(across.first) * 255;
    const std::int64_t last = across.partOf(across.last) * 255;
    const bool endsInside = across.last > across.first && across.last <= m_clip.right();
    for (int y = down.first; y <= lastRow; ++y) {
        const std::int64_t height = down.partOf(y);
        const auto weighted
            = [height](std::int64_t coverage) { return static_cast<unsigned>(((height * coverage) >> 16) >> 16); };
        blendRow(across.first, across.first, y, color, weighted(first));
        if (across.first < lastWhole)
            blendRow(across.first + 1, lastWhole, y, color, weighted(std::int64_t(One) * 255));
        if (endsInside)
            blendRow(across.last, across.last, y, color, weighted(last));
    }
}

// Finds the part of the clip that a rect covers. Returns false if there is none.
ZEL_INLINE bool Rasteriser::findCovered(const QRectF& rect, Area& covered) const
{
    // QPainter draws a rect as a thick line between the middles of its sides.
    double from = m_mapping.x(rect.left());
    double to = m_mapping.x(rect.left() + rect.width());
    const double middleY = m_mapping.y((rect.top() + (rect.top() + rect.height())) * 0.5);
    double steepness = rect.height() / rect.width();
    if (from < 0 || to > m_size.width()) {
        // If the line is cut off, its ratio of thickness to length grows by the factor by which it becomes shorter.
        const double length = to - from;
        from = std::max(from, 0.0);
        to = std::min(to, double(m_size.width()));
        const double rest = to - from;
        if (!(rest > 0))
            return false;
        steepness *= std::sqrt((length * length) / (rest * rest));
    }
    const double middleX = (from + to) * 0.5;
    const double halfHeight = steepness * (std::abs(to - from) * 0.5);
    const double halfWidth = (1 / steepness) * ((middleY + halfHeight) - (middleY - halfHeight)) * 0.5;
    // Only the part inside the image counts for the smallest side.
    const double left = std::max(middleX - halfWidth, 0.0);
    const double top = std::max(middleY - halfHeight, 0.0);
    const double right = std::min(middleX + halfWidth, double(m_size.width()));
    const double bottom = std::min(middleY + halfHeight, double(m_size.height()));
    if (!(right - left >= SmallestSide) || !(bottom - top >= SmallestSide))
        return false;
    covered = {std::max(left, m_clipArea.left), std::max(top, m_clipArea.top), std::min(right, m_clipArea.right),
        std::min(bottom, m_clipArea.bottom)};
    return covered.left < covered.right && covered.top < covered.bottom;
}

template <bool isAvx2> ZEL_INLINE void Rasteriser::fillAnyRect(const QRectF& rect, QRgb color)
{
    Area covered{};
    if (!findCovered(rect, covered))
        return;
    const Extent across(covered.left, covered.right);
    const Extent down(covered.top, covered.bottom);
    if (across.last - across.first <= LargestSmallRect
        && isWithinClip(across.first, down.first, across.last + ColumnsAtOnce - 1, down.last)) {
        if constexpr (isAvx2)
            Avx2SmallRects::fill(*this, across, down, color);
        else
            fillSmallRect(across, down, color);
        return;
    }
    fillLargeRect(across, down, color);
}

// Blends ColumnsAtOnce pixels of each row from `top` to `bottom`, which must lie within the clip.
ZEL_INLINE void Rasteriser::blendFew(int x, int top, int bottom, QRgb color, const std::uint8_t* covered)
{
    std::uint32_t all = 0;
    std::memcpy(&all, covered, ColumnsAtOnce);
    if (all == 0)
        return;
    if (x >= m_clip.left() && x + ColumnsAtOnce - 1 <= m_clip.right()) {
        PairChannels left;
        PairChannels right;
        pixelpair::spread(all, left, right);
        const QuadBlend few(pixelpair::ofColor(color), left, right);
        for (int y = top; y <= bottom; ++y)
            few.apply(row(y) + x);
        return;
    }
    for (int y = top; y <= bottom; ++y) {
        for (int i = 0; i < ColumnsAtOnce; ++i)
            blend(x + i, y, color, covered[i]);
    }
}

ZEL_INLINE void Rasteriser::drawAnyMask(const CoverageMask& mask, QRgb color)
{
    const int lastRow = std::min(mask.y + mask.height - 1, m_clip.bottom());
    for (int y = std::max(mask.y, m_clip.top()); y <= lastRow; ++y) {
        const std::uint8_t* covered = mask.coverage + static_cast<std::ptrdiff_t>(y - mask.y) * mask.width;
        for (int x = mask.x; x < mask.x + mask.width; x += ColumnsAtOnce, covered += ColumnsAtOnce)
            blendFew(x, y, y, color, covered);
    }
}

ZEL_INLINE void Rasteriser::drawAnyStretched(const StretchedMask& stretched, QRgb color)
{
    const CoverageMask& mask = stretched.mask;
    const int left = std::max(mask.x + stretched.column, m_clip.left());
    const int right = std::min(mask.x + stretched.column + stretched.moreColumns - 1, m_clip.right());
    for (int maskRow = 0; maskRow < mask.height; ++maskRow) {
        const int first = mask.y + maskRow + (maskRow > stretched.row ? stretched.moreRows : 0);
        const int top = std::max(first, m_clip.top());
        const int bottom = std::min(first + (maskRow == stretched.row ? stretched.moreRows : 0), m_clip.bottom());
        const std::uint8_t* covered = mask.coverage + static_cast<std::ptrdiff_t>(maskRow) * mask.width;
        for (int column = 0; column < stretched.column; column += ColumnsAtOnce)
            blendFew(mask.x + column, top, bottom, color, covered + column);
        for (int y = top; y <= bottom && left <= right; ++y)
            blendRow(left, right, y, color, covered[stretched.column]);
        for (int column = stretched.column; column < mask.width; column += ColumnsAtOnce)
            blendFew(mask.x + stretched.moreColumns + column, top, bottom, color, covered + column);
    }
}

struct Rasteriser::Avx2Fills
{
    ZEL_AVX2 static void fillRect(Rasteriser& rasteriser, const QRectF& rect, QRgb color)
    {
        rasteriser.fillAnyRect<ZEL_IS_X86>(rect, color);
    }

    ZEL_AVX2 static void drawMask(Rasteriser& rasteriser, const CoverageMask& mask, QRgb color)
    {
        rasteriser.drawAnyMask(mask, color);
    }

    ZEL_AVX2 static void drawStretched(Rasteriser& rasteriser, const StretchedMask& mask, QRgb color)
    {
        rasteriser.drawAnyStretched(mask, color);
    }
};

struct Rasteriser::Avx512Fills
{
    // Returns false, and draws nothing, if the rect has too many pixels.
    ZEL_AVX512 static bool drawRect(const Rasteriser& on, const QRectF& rect, QRgb fill, const Stroke& stroke)
    {
        Area covered{};
        const bool isCovered = on.findCovered(rect, covered);
        const Sides filled = isCovered
            ? Sides{static_cast<int>(covered.left * One), static_cast<int>(covered.top * One),
                static_cast<int>(covered.right * One), static_cast<int>(covered.bottom * One)}
            : Sides{};
        if (stroke.opacity > 0)
            return Avx512Rects::draw(on, filled, fill, on.lineAround(rect), stroke);
        return !isCovered || Avx512Rects::fill(on, filled, fill);
    }
};

// Returns whether a rect needs no more than four rows and columns of pixels, wherever it begins. A line around it takes
// one more.
bool Rasteriser::isTiny(const QRectF& rect, bool hasLine) const
{
    const double largest = (ColumnsAtOnce - (hasLine ? 2 : 1)) * m_pixel;
    return rect.width() < largest && rect.height() < largest;
}

void Rasteriser::drawRect(const QRectF& rect, QRgb fill, QRgb border, int opacity)
{
    if (m_hasAvx512 && isTiny(rect, opacity > 0) && Avx512Fills::drawRect(*this, rect, fill, {border, opacity}))
        return;
    fillRect(rect, fill);
    if (opacity > 0)
        strokeRect(rect, border, opacity);
}

void Rasteriser::fillRect(const QRectF& rect, QRgb color)
{
    m_hasAvx2 ? Avx2Fills::fillRect(*this, rect, color) : fillAnyRect<false>(rect, color);
}

void Rasteriser::drawMask(const CoverageMask& mask, QRgb color)
{
    m_hasAvx2 ? Avx2Fills::drawMask(*this, mask, color) : drawAnyMask(mask, color);
}

void Rasteriser::drawStretchedMask(const StretchedMask& mask, QRgb color)
{
    m_hasAvx2 ? Avx2Fills::drawStretched(*this, mask, color) : drawAnyStretched(mask, color);
}

} // namespace mirn::zelchipview
