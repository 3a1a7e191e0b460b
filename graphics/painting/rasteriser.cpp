// SPDX-License-Identifier: MIT
#include "graphics/painting/rasteriser.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

// The rules below were found by observing what QPainter draws for shapes at all sub-pixel positions, and are held to it
// by a test. Rects are measured in 1/65536 of a pixel, the ends of lines in 1/64, their slopes in 1/65536. Where two
// ways of computing a number differ in its last bit only, the one that QPainter's rounding agrees with is taken: at
// whole pixels that bit shows.

namespace mirn::zelchipview {

namespace {

constexpr int One = 1 << 16; // a pixel, as 16.16 fixed-point number
constexpr double SmallestSide = 1.0 / 64; // a rect with a shorter side is not drawn

constexpr int LineUnit = 64; // of a pixel
constexpr int LineBits = 6;
constexpr int HalfPixel = LineUnit / 2;

std::int64_t toFixed(double value)
{
    return static_cast<std::int64_t>(value * One);
}

// Two of a pixel's channels at a time, each times `alpha` / 255, rounded to nearest.
std::uint32_t scaledPair(std::uint32_t pair, unsigned alpha)
{
    const std::uint32_t product = pair * alpha;
    return ((product + ((product >> 8) & 0x00ff00ff) + 0x00800080) >> 8) & 0x00ff00ff;
}

std::uint32_t scaled(std::uint32_t pixel, unsigned alpha)
{
    return scaledPair(pixel & 0x00ff00ff, alpha) | (scaledPair((pixel >> 8) & 0x00ff00ff, alpha) << 8);
}

// Pixels' coverage along one axis of a rect that begins and ends within them: full between the two.
struct Extent
{
    Extent(double from, double to)
        : first(static_cast<int>(from))
        , last(static_cast<int>(to))
        , start(toFixed(from))
        , end(toFixed(to))
    { }

    // The covered part of a pixel, as 16.16 number.
    [[nodiscard]] std::int64_t partOf(int pixel) const
    {
        const std::int64_t begin = std::int64_t(pixel) * One;
        return std::min(begin + One, end) - std::max(begin, start);
    }

    int first;
    int last;
    std::int64_t start;
    std::int64_t end;
};

} // namespace

struct Rasteriser::Stroke
{
    QRgb color;
    int opacity;
};

Rasteriser::Rasteriser(QImage& image, const QRect& clip, const Mapping& mapping)
    : m_bits(image.bits())
    , m_bytesPerLine(image.bytesPerLine())
    , m_size(image.size())
    , m_clip(clip & image.rect())
    , m_mapping(mapping)
{ }

std::uint32_t* Rasteriser::row(int y) const
{
    return reinterpret_cast<std::uint32_t*>(m_bits + y * m_bytesPerLine);
}

inline void Rasteriser::blend(int x, int y, QRgb color, unsigned coverage)
{
    if (coverage == 0 || x < m_clip.left() || x > m_clip.right() || y < m_clip.top() || y > m_clip.bottom())
        return;
    std::uint32_t& pixel = row(y)[x];
    pixel = scaled(color, coverage) + scaled(pixel, 255 - coverage);
}

// `left` and `right` lie within the clip.
inline void Rasteriser::blendRow(int left, int right, int y, QRgb color, unsigned coverage)
{
    std::uint32_t* pixels = row(y);
    if (coverage == 255) {
        std::fill(pixels + left, pixels + right + 1, color);
        return;
    }
    if (coverage == 0)
        return;
    const std::uint32_t source = scaled(color, coverage);
    for (int x = left; x <= right; ++x)
        pixels[x] = source + scaled(pixels[x], 255 - coverage);
}

inline void Rasteriser::blendColumn(int x, int top, int bottom, QRgb color, unsigned coverage)
{
    if (coverage == 0)
        return;
    const std::uint32_t source = scaled(color, coverage);
    for (int y = top; y <= bottom; ++y) {
        std::uint32_t& pixel = row(y)[x];
        pixel = source + scaled(pixel, 255 - coverage);
    }
}

void Rasteriser::fillRect(const QRectF& rect, QRgb color)
{
    // A rect is a thick line between the middles of its sides.
    const double from = m_mapping.x(rect.left());
    const double to = m_mapping.x(rect.left() + rect.width());
    const double middleY = m_mapping.y((rect.top() + (rect.top() + rect.height())) * 0.5);
    const double middleX = (from + to) * 0.5;
    const double steepness = rect.height() / rect.width();
    const double halfHeight = steepness * (std::abs(to - from) * 0.5);
    const double halfWidth = (1 / steepness) * ((middleY + halfHeight) - (middleY - halfHeight)) * 0.5;
    // What is seen of it counts, not what lies outside of the image.
    double left = std::max(middleX - halfWidth, 0.0);
    double top = std::max(middleY - halfHeight, 0.0);
    double right = std::min(middleX + halfWidth, double(m_size.width()));
    double bottom = std::min(middleY + halfHeight, double(m_size.height()));
    if (!(right - left >= SmallestSide) || !(bottom - top >= SmallestSide))
        return;
    left = std::max(left, double(m_clip.left()));
    top = std::max(top, double(m_clip.top()));
    right = std::min(right, double(m_clip.right() + 1));
    bottom = std::min(bottom, double(m_clip.bottom() + 1));
    if (!(left < right) || !(top < bottom))
        return;
    const Extent across(left, right);
    const Extent down(top, bottom);
    const int lastColumn = std::min(across.last, m_clip.right());
    const int lastRow = std::min(down.last, m_clip.bottom());
    const auto coverageOf = [&across](int x) { return across.partOf(x) * 255; };
    const std::int64_t first = coverageOf(across.first);
    const std::int64_t last = coverageOf(across.last);
    for (int y = down.first; y <= lastRow; ++y) {
        const std::int64_t height = down.partOf(y);
        const auto weighted
            = [height](std::int64_t coverage) { return static_cast<unsigned>(((height * coverage) >> 16) >> 16); };
        blendRow(across.first, across.first, y, color, weighted(first));
        if (lastColumn > across.first) {
            const bool isLastWhole = lastColumn < across.last;
            if (across.first + 1 <= lastColumn - (isLastWhole ? 0 : 1))
                blendRow(
                    across.first + 1, lastColumn - (isLastWhole ? 0 : 1), y, color, weighted(std::int64_t(One) * 255));
            if (!isLastWhole)
                blendRow(lastColumn, lastColumn, y, color, weighted(last));
        }
    }
}

// One pixel further along a line: the two pixels beside its centre share the coverage.
template <bool isSteep> void Rasteriser::step(int along, int across, int weight, const Stroke& stroke)
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

// A line along the pixels: the same share of its coverage everywhere but at its ends.
template <bool isSteep> void Rasteriser::straightLine(int start, int end, int across, const Stroke& stroke)
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

template <bool isSteep> void Rasteriser::scan(int start, int end, int across, int slope, const Stroke& stroke)
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

void Rasteriser::thinLine(QPointF a, QPointF b, const Stroke& stroke, Cap cap)
{
    const auto toUnits = [](double value) { return static_cast<int>(value * LineUnit); };
    int start = toUnits(a.x());
    int end = toUnits(b.x());
    int acrossStart = toUnits(a.y());
    int acrossEnd = toUnits(b.y());
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
    if (cap == SquareCaps) {
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

void Rasteriser::drawLine(const QLineF& line, QRgb color, int opacity)
{
    const QPointF from(m_mapping.x(line.x1()), m_mapping.y(line.y1()));
    const QPointF to(m_mapping.x(line.x2()), m_mapping.y(line.y2()));
    thinLine(from, to, {color, opacity}, SquareCaps);
}

void Rasteriser::strokeRect(const QRectF& rect, QRgb color, int opacity)
{
    const Stroke stroke{color, opacity};
    const double left = m_mapping.x(rect.left());
    const double top = m_mapping.y(rect.top());
    const double right = m_mapping.x(rect.left() + rect.width());
    const double bottom = m_mapping.y(rect.top() + rect.height());
    thinLine({left, top}, {right, top}, stroke, NoCaps);
    thinLine({right, top}, {right, bottom}, stroke, NoCaps);
    thinLine({right, bottom}, {left, bottom}, stroke, NoCaps);
    thinLine({left, bottom}, {left, top}, stroke, NoCaps);
}

void Rasteriser::drawMask(int x, int y, int width, int height, const std::uint8_t* coverage, QRgb color)
{
    const int left = std::max(x, m_clip.left());
    const int right = std::min(x + width - 1, m_clip.right());
    const int bottom = std::min(y + height - 1, m_clip.bottom());
    for (int line = std::max(y, m_clip.top()); line <= bottom; ++line) {
        const std::uint8_t* covered = coverage + std::ptrdiff_t(line - y) * width - x;
        for (int column = left; column <= right; ++column)
            blend(column, line, color, covered[column]);
    }
}

} // namespace mirn::zelchipview
