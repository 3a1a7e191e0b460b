// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/rasteriser_pixels.h"

#include <cstdlib>
#include <utility>

// These rules for thin lines were found, and are tested, in the same way as those for rects. Ends are measured in 1/64
// of a pixel, slopes in 1/65536.

namespace mirn::zelchipview {

using namespace pixel;

namespace {

// Returns the part of a pixel that lies between two ends of a line, in line units; it is negative outside.
int weightOf(int pixel, int start, int end)
{
    return std::min((pixel + 1) * LineUnit, end) - std::max(pixel * LineUnit, start);
}

} // namespace

// Draws one step along a line: the two pixels beside its centre share the coverage.
template <bool isSteep> ZEL_INLINE void Rasteriser::step(int along, int across, int weight, const Stroke& stroke)
{
    const int beside = across >> 16;
    const int share = (across >> 8) & 0xff;
    const auto part = [&](int coverage) {
        return static_cast<unsigned>((((coverage * weight) >> LineBits) * stroke.opacity) >> 8);
    };
    if (isSteep) {
        blend(beside, along, stroke.color, part(255 - share));
        blend(beside + 1, along, stroke.color, part(share));
    } else {
        blend(along, beside, stroke.color, part(255 - share));
        blend(along, beside + 1, stroke.color, part(share));
    }
}

// Draws a horizontal side of a small rect. The row of pixels above its middle and the one below share the coverage.
ZEL_INLINE void Rasteriser::strokeAcross(int left, int right, int middle, const Stroke& stroke)
{
    const PairChannels channels = pixelpair::ofColor(stroke.color);
    const PairChannels upperShares = pixelpair::both(255 - secondShare(middle));
    const PairChannels lowerShares = pixelpair::both(secondShare(middle));
    const auto coverageOf = [&stroke](PairChannels shares, PairChannels weights) {
        return (((shares * weights) >> LineBits) * pixelpair::both(stroke.opacity)) >> 8;
    };
    const auto weightsOf = [=](int x) {
        return pixelpair::of(std::max(weightOf(x, left, right), 0), std::max(weightOf(x + 1, left, right), 0));
    };
    std::uint32_t* upper = row((middle - HalfPixel) >> LineBits);
    std::uint32_t* lower = row(((middle - HalfPixel) >> LineBits) + 1);
    const int lastColumn = (right - 1) >> LineBits;
    for (int x = left >> LineBits; x <= lastColumn; x += ColumnsAtOnce) {
        const PairChannels first = weightsOf(x);
        const PairChannels second = weightsOf(x + 2);
        QuadBlend(channels, coverageOf(upperShares, first), coverageOf(upperShares, second)).apply(upper + x);
        QuadBlend(channels, coverageOf(lowerShares, first), coverageOf(lowerShares, second)).apply(lower + x);
    }
}

// Draws a vertical side of a small rect.
ZEL_INLINE void Rasteriser::strokeDown(int top, int bottom, int middle, const Stroke& stroke)
{
    const PairChannels channels = pixelpair::ofColor(stroke.color);
    const PairChannels shares = pixelpair::of(255 - secondShare(middle), secondShare(middle));
    const int x = (middle - HalfPixel) >> LineBits;
    const int firstRow = top >> LineBits;
    const int lastRow = (bottom - 1) >> LineBits;
    const auto blendOf = [&](int weight) {
        const PairChannels coverage = (shares * pixelpair::both(weight)) >> LineBits;
        return PairBlend(channels, (coverage * pixelpair::both(stroke.opacity)) >> 8);
    };
    blendOf(weightOf(firstRow, top, bottom)).apply(row(firstRow) + x);
    if (firstRow == lastRow)
        return;
    const PairBlend whole = blendOf(LineUnit);
    for (int y = firstRow + 1; y < lastRow; ++y)
        whole.apply(row(y) + x);
    blendOf(weightOf(lastRow, top, bottom)).apply(row(lastRow) + x);
}

// The rect must lie within the clip, together with the padding columns right of it and the row below it.
template <bool isAvx2>
ZEL_INLINE void Rasteriser::strokeSmallRect(int left, int top, int right, int bottom, const Stroke& stroke)
{
    const auto across = [&](int middle) {
        if constexpr (isAvx2)
            Avx2SmallRects::strokeAcross(*this, left, right, middle, stroke);
        else
            strokeAcross(left, right, middle, stroke);
    };
    across(top);
    strokeDown(top, bottom, right, stroke);
    across(bottom);
    strokeDown(top, bottom, left, stroke);
}

// Draws a horizontal or vertical line, whose coverage is the same everywhere except at its ends.
template <bool isSteep> ZEL_INLINE void Rasteriser::straightLine(int start, int end, int across, const Stroke& stroke)
{
    const int firstPixel = start >> LineBits;
    const int lastPixel = end >> LineBits;
    const int firstWeight = firstPixel == lastPixel ? end - start : LineUnit - (start & (LineUnit - 1));
    const int lastWeight = firstPixel == lastPixel ? 0 : end & (LineUnit - 1);
    const int from = std::max(firstPixel + 1, isSteep ? m_clip.top() : m_clip.left());
    const int to = std::min(lastPixel - 1, isSteep ? m_clip.bottom() : m_clip.right());
    const int share = (across >> 8) & 0xff;
    for (const auto& [beside, coverage] :
        {std::pair(across >> 16, 255 - share), std::pair((across >> 16) + 1, share)}) {
        if (beside < (isSteep ? m_clip.left() : m_clip.top()) || beside > (isSteep ? m_clip.right() : m_clip.bottom()))
            continue;
        const auto part = [&stroke, coverage = coverage](int weight) {
            return static_cast<unsigned>((((coverage * weight) >> LineBits) * stroke.opacity) >> 8);
        };
        if (isSteep) {
            blend(beside, firstPixel, stroke.color, part(firstWeight));
            blendColumn(beside, from, to, stroke.color, part(LineUnit));
            blend(beside, lastPixel, stroke.color, part(lastWeight));
        } else {
            blend(firstPixel, beside, stroke.color, part(firstWeight));
            if (from <= to)
                blendRow(from, to, beside, stroke.color, part(LineUnit));
            blend(lastPixel, beside, stroke.color, part(lastWeight));
        }
    }
}

template <bool isSteep>
ZEL_INLINE void Rasteriser::scan(int start, int end, int across, int slope, const Stroke& stroke)
{
    int pixel = start >> LineBits;
    const int lastPixel = end >> LineBits;
    const int firstWeight = pixel == lastPixel ? end - start : LineUnit - (start & (LineUnit - 1));
    if (firstWeight != 0) {
        step<isSteep>(pixel, across, firstWeight, stroke);
        across += slope;
        ++pixel;
    }
    const int clipStart = isSteep ? m_clip.top() : m_clip.left();
    const int clipEnd = isSteep ? m_clip.bottom() : m_clip.right();
    if (pixel < clipStart && pixel < lastPixel) {
        const int skipped = std::min(clipStart, lastPixel) - pixel;
        across += skipped * slope;
        pixel += skipped;
    }
    for (; pixel < lastPixel && pixel <= clipEnd; ++pixel) {
        step<isSteep>(pixel, across, LineUnit, stroke);
        across += slope;
    }
    const int lastWeight = end & (LineUnit - 1);
    if (pixel == lastPixel && lastWeight != 0)
        step<isSteep>(pixel, across, lastWeight, stroke);
}

// Moves the ends of a line that reaches further than a pixel beyond the image to there. A pixel of the line may change
// by that, because slopes are rounded. Returns false if nothing is left of the line.
ZEL_INLINE bool Rasteriser::cutOff(QPointF& a, QPointF& b) const
{
    constexpr double Margin = 1;
    const double right = m_size.width() + Margin;
    const double bottom = m_size.height() + Margin;
    const auto isOutside = [](double from, double to, double most) {
        return (from < -Margin && to < -Margin) || (from > most && to > most);
    };
    if (isOutside(a.x(), b.x(), right))
        return false;
    for (QPointF* end : {&a, &b}) {
        const double x = std::clamp(end->x(), -Margin, right);
        if (x != end->x())
            *end = {x, end->y() + (b.y() - a.y()) / (b.x() - a.x()) * (x - end->x())};
    }
    if (isOutside(a.y(), b.y(), bottom))
        return false;
    for (QPointF* end : {&a, &b}) {
        const double y = std::clamp(end->y(), -Margin, bottom);
        if (y != end->y())
            *end = {end->x() + (b.x() - a.x()) / (b.y() - a.y()) * (y - end->y()), y};
    }
    return true;
}

ZEL_INLINE void Rasteriser::thinLine(QPointF a, QPointF b, const Stroke& stroke, Ends ends)
{
    if (!cutOff(a, b))
        return;
    int start = toLineUnits(a.x());
    int end = toLineUnits(b.x());
    int acrossStart = toLineUnits(a.y());
    int acrossEnd = toLineUnits(b.y());
    const bool isSteep = std::abs(end - start) < std::abs(acrossEnd - acrossStart);
    if (isSteep) {
        std::swap(start, acrossStart);
        std::swap(end, acrossEnd);
    }
    if (start == end)
        return;
    const int slope = static_cast<int>(std::int64_t(acrossEnd - acrossStart) * One / (end - start));
    if (start > end) {
        std::swap(start, end);
        std::swap(acrossStart, acrossEnd);
    }
    int across = (acrossStart - HalfPixel) * (One / LineUnit);
    across -= (((start & (LineUnit - 1)) - HalfPixel) * slope) >> LineBits;
    if (ends == Ends::Square) {
        start -= HalfPixel;
        across -= slope >> 1;
        end += HalfPixel;
    }
    if (slope == 0 && isSteep)
        straightLine<true>(start, end, across, stroke);
    else if (slope == 0)
        straightLine<false>(start, end, across, stroke);
    else if (isSteep)
        scan<true>(start, end, across, slope, stroke);
    else
        scan<false>(start, end, across, slope, stroke);
}

ZEL_INLINE void Rasteriser::drawAnyLine(const QLineF& line, QRgb color, int opacity)
{
    const QPointF from(m_mapping.x(line.x1()), m_mapping.y(line.y1()));
    const QPointF to(m_mapping.x(line.x2()), m_mapping.y(line.y2()));
    thinLine(from, to, {color, opacity}, Ends::Square);
}

ZEL_INLINE void Rasteriser::strokeAnyPolygon(const QPointF* corners, int count, QRgb color, int opacity)
{
    const auto pixelOf = [&](int n) { return QPointF(m_mapping.x(corners[n].x()), m_mapping.y(corners[n].y())); };
    QPointF from = pixelOf(0);
    for (int n = 1; n <= count; ++n) {
        const QPointF to = pixelOf(n % count);
        thinLine(from, to, {color, opacity}, Ends::Flat);
        from = to;
    }
}

template <bool isAvx2> ZEL_INLINE void Rasteriser::strokeAnyRect(const QRectF& rect, QRgb color, int opacity)
{
    const Stroke stroke{color, opacity};
    const auto [left, top, right, bottom] = lineAround(rect);
    const bool isSmall = right > left && bottom > top && right - left < LargestSmallRect * LineUnit;
    if (isSmall
        && isWithinClip((left - HalfPixel) >> LineBits, (top - HalfPixel) >> LineBits,
            (right >> LineBits) + ColumnsAtOnce - 1, (bottom >> LineBits) + 1)) {
        strokeSmallRect<isAvx2>(left, top, right, bottom, stroke);
        return;
    }
    const QPoint first((left - HalfPixel) >> LineBits, (top - HalfPixel) >> LineBits);
    const QPoint last(((right - HalfPixel) >> LineBits) + 1, ((bottom - HalfPixel) >> LineBits) + 1);
    if (!m_clip.intersects(QRect(first, last)))
        return; // a narrow part of a picture is near many rects that it does not show
    const auto across = [](int middle) { return (middle - HalfPixel) * (One / LineUnit); };
    if (right > left)
        straightLine<false>(left, right, across(top), stroke);
    if (bottom > top)
        straightLine<true>(top, bottom, across(right), stroke);
    if (right > left)
        straightLine<false>(left, right, across(bottom), stroke);
    if (bottom > top)
        straightLine<true>(top, bottom, across(left), stroke);
}

struct Rasteriser::Avx2Lines
{
    ZEL_AVX2 static void strokeRect(Rasteriser& rasteriser, const QRectF& rect, QRgb color, int opacity)
    {
        rasteriser.strokeAnyRect<ZEL_IS_X86>(rect, color, opacity);
    }

    ZEL_AVX2 static void drawLine(Rasteriser& rasteriser, const QLineF& line, QRgb color, int opacity)
    {
        rasteriser.drawAnyLine(line, color, opacity);
    }

    ZEL_AVX2 static void strokePolygon(
        Rasteriser& rasteriser, const QPointF* corners, int count, QRgb color, int opacity)
    {
        rasteriser.strokeAnyPolygon(corners, count, color, opacity);
    }
};

void Rasteriser::strokeRect(const QRectF& rect, QRgb color, int opacity)
{
    m_hasAvx2 ? Avx2Lines::strokeRect(*this, rect, color, opacity) : strokeAnyRect<false>(rect, color, opacity);
}

void Rasteriser::drawLine(const QLineF& line, QRgb color, int opacity)
{
    m_hasAvx2 ? Avx2Lines::drawLine(*this, line, color, opacity) : drawAnyLine(line, color, opacity);
}

void Rasteriser::strokePolygon(const QPointF* corners, int count, QRgb color, int opacity)
{
    m_hasAvx2 ? Avx2Lines::strokePolygon(*this, corners, count, color, opacity)
              : strokeAnyPolygon(corners, count, color, opacity);
}

} // namespace mirn::zelchipview
