// SPDX-License-Identifier: MIT
#include "graphics/painting/rasteriser.h"

#include "graphics/painting/pixelblend.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <utility>

// The rules below were found by observing what QPainter draws for shapes at all sub-pixel positions, and are held to it
// by a test. Rects are measured in 1/65536 of a pixel, the ends of lines in 1/64, their slopes in 1/65536. Where two
// ways of computing a number differ in its last bit only, the one that QPainter's rounding agrees with is taken: at
// whole pixels that bit shows.

// All drawing is compiled twice, for every processor of a kind and for the newer ones, which draw a large picture in
// three quarters of the time. Instructions that multiply and add in one step are not used: they round otherwise.
#if defined(__x86_64__)
#define ZEL_AVX2 __attribute__((target("avx2")))
#define ZEL_HAS_AVX2 __builtin_cpu_supports("avx2")
#else
#define ZEL_AVX2
#define ZEL_HAS_AVX2 false
#endif
// What both of them call belongs into them: a function of its own would be compiled for every processor only.
#define ZEL_INLINE __attribute__((always_inline)) inline

namespace mirn::zelchipview {

namespace {

constexpr int One = 1 << 16; // a pixel, as 16.16 fixed-point number
constexpr int LargestSmallRect = 16; // in pixels
constexpr int ColumnsAtOnce = 4;
constexpr double SmallestSide = 1.0 / 64; // a rect with a shorter side is not drawn

constexpr int LineUnit = 64; // of a pixel
constexpr int LineBits = 6;
constexpr int HalfPixel = LineUnit / 2;

// The part of a pixel that lies between two ends of a line, in line units; less than 0 outside.
int weightOf(int pixel, int start, int end)
{
    return std::min((pixel + 1) * LineUnit, end) - std::max(pixel * LineUnit, start);
}

int toLineUnits(double value)
{
    return static_cast<int>(value * LineUnit);
}

std::int64_t toFixed(double value)
{
    return static_cast<std::int64_t>(value * One);
}

// Two of a pixel's channels at a time, each times `alpha` / 255, rounded as QPainter rounds it.
std::uint32_t scaledPair(std::uint32_t pair, unsigned alpha)
{
    const std::uint32_t product = pair * alpha;
    return ((product + ((product >> 8) & 0x00ff00ff) + 0x00800080) >> 8) & 0x00ff00ff;
}

std::uint32_t scaled(std::uint32_t pixel, unsigned alpha)
{
    return scaledPair(pixel & 0x00ff00ff, alpha) | (scaledPair((pixel >> 8) & 0x00ff00ff, alpha) << 8);
}

} // namespace

// Pixels' coverage along one axis of a rect that begins and ends within them: full between the two.
struct Rasteriser::Extent
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

struct Rasteriser::Stroke
{
    QRgb color;
    int opacity;
};

Rasteriser::Rasteriser(QImage& image, const QRect& clip, const Mapping& mapping, Instructions instructions)
    : m_hasAvx2(instructions == Instructions::Fastest && ZEL_HAS_AVX2)
    , m_bits(image.bits())
    , m_bytesPerLine(image.bytesPerLine())
    , m_size(image.size())
    , m_clip(clip & image.rect())
    , m_clipArea{double(m_clip.left()), double(m_clip.top()), double(m_clip.right() + 1), double(m_clip.bottom() + 1)}
    , m_mapping(mapping)
{ }

ZEL_INLINE std::uint32_t* Rasteriser::row(int y) const
{
    return reinterpret_cast<std::uint32_t*>(m_bits + y * m_bytesPerLine);
}

ZEL_INLINE void Rasteriser::blend(int x, int y, QRgb color, unsigned coverage)
{
    if (coverage == 0 || x < m_clip.left() || x > m_clip.right() || y < m_clip.top() || y > m_clip.bottom())
        return;
    std::uint32_t& pixel = row(y)[x];
    pixel = scaled(color, coverage) + scaled(pixel, 255 - coverage);
}

// `left` and `right` lie within the clip.
ZEL_INLINE void Rasteriser::blendRow(int left, int right, int y, QRgb color, unsigned coverage)
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

ZEL_INLINE void Rasteriser::blendColumn(int x, int top, int bottom, QRgb color, unsigned coverage)
{
    if (coverage == 0)
        return;
    const std::uint32_t source = scaled(color, coverage);
    for (int y = top; y <= bottom; ++y) {
        std::uint32_t& pixel = row(y)[x];
        pixel = source + scaled(pixel, 255 - coverage);
    }
}

ZEL_INLINE bool Rasteriser::isWithinClip(int left, int top, int right, int bottom) const
{
    return left >= m_clip.left() && right <= m_clip.right() && top >= m_clip.top() && bottom <= m_clip.bottom();
}

// Four columns at a time, whether the rect covers them or not: in rects of a few pixels a wrongly predicted branch
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

ZEL_INLINE void Rasteriser::fillAnyRect(const QRectF& rect, QRgb color)
{
    // A rect is a thick line between the middles of its sides.
    double from = m_mapping.x(rect.left());
    double to = m_mapping.x(rect.left() + rect.width());
    const double middleY = m_mapping.y((rect.top() + (rect.top() + rect.height())) * 0.5);
    double steepness = rect.height() / rect.width();
    if (from < 0 || to > m_size.width()) {
        // What is left of the line becomes as much thicker as it becomes shorter.
        const double length = to - from;
        from = std::max(from, 0.0);
        to = std::min(to, double(m_size.width()));
        const double rest = to - from;
        if (!(rest > 0))
            return;
        steepness *= std::sqrt((length * length) / (rest * rest));
    }
    const double middleX = (from + to) * 0.5;
    const double halfHeight = steepness * (std::abs(to - from) * 0.5);
    const double halfWidth = (1 / steepness) * ((middleY + halfHeight) - (middleY - halfHeight)) * 0.5;
    // What is seen of it counts, not what lies outside of the image.
    double left = std::max(middleX - halfWidth, 0.0);
    double top = std::max(middleY - halfHeight, 0.0);
    double right = std::min(middleX + halfWidth, double(m_size.width()));
    double bottom = std::min(middleY + halfHeight, double(m_size.height()));
    if (!(right - left >= SmallestSide) || !(bottom - top >= SmallestSide))
        return;
    left = std::max(left, m_clipArea.left);
    top = std::max(top, m_clipArea.top);
    right = std::min(right, m_clipArea.right);
    bottom = std::min(bottom, m_clipArea.bottom);
    if (!(left < right) || !(top < bottom))
        return;
    const Extent across(left, right);
    const Extent down(top, bottom);
    if (across.last - across.first <= LargestSmallRect
        && isWithinClip(across.first, down.first, across.last + ColumnsAtOnce - 1, down.last)) {
        fillSmallRect(across, down, color);
        return;
    }
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

// Within the clip, together with the pixels right of it and below.
ZEL_INLINE void Rasteriser::strokeSmallRect(int left, int top, int right, int bottom, const Stroke& stroke)
{
    const PairChannels channels = pixelpair::ofColor(stroke.color);
    const PairChannels opacity = pixelpair::both(stroke.opacity);
    const auto coverageOf
        = [&](PairChannels shares, PairChannels weights) { return (((shares * weights) >> LineBits) * opacity) >> 8; };
    const auto shareOf = [](int middle) { return static_cast<unsigned>((middle - HalfPixel) & (LineUnit - 1)) * 4; };
    const int firstRow = top >> LineBits;
    const int lastRow = (bottom - 1) >> LineBits;
    const int firstColumn = left >> LineBits;
    const int lastColumn = (right - 1) >> LineBits;
    PairChannels weights[LargestSmallRect / 2 + ColumnsAtOnce];
    for (int x = firstColumn, i = 0; x <= lastColumn; x += 2, ++i)
        weights[i] = pixelpair::of(weightOf(x, left, right), std::max(weightOf(x + 1, left, right), 0));
    // The columns are drawn by fours, so there may be one pair too many.
    weights[(lastColumn - firstColumn) / 2 + 1] = pixelpair::both(0);

    const auto drawHorizontal = [&](int middle) {
        const int y = (middle - HalfPixel) >> LineBits;
        const PairChannels upperShares = pixelpair::both(255 - shareOf(middle));
        const PairChannels lowerShares = pixelpair::both(shareOf(middle));
        std::uint32_t* upper = row(y);
        std::uint32_t* lower = row(y + 1);
        for (int x = firstColumn; x <= lastColumn; x += ColumnsAtOnce) {
            const PairChannels first = weights[(x - firstColumn) / 2];
            const PairChannels second = weights[(x - firstColumn) / 2 + 1];
            QuadBlend(channels, coverageOf(upperShares, first), coverageOf(upperShares, second)).apply(upper + x);
            QuadBlend(channels, coverageOf(lowerShares, first), coverageOf(lowerShares, second)).apply(lower + x);
        }
    };
    const auto drawVertical = [&](int middle) {
        const int x = (middle - HalfPixel) >> LineBits;
        const PairChannels shares = pixelpair::of(255 - shareOf(middle), shareOf(middle));
        const auto blendRow = [&](int y, int weight) {
            PairBlend(channels, coverageOf(shares, pixelpair::both(weight))).apply(row(y) + x);
        };
        blendRow(firstRow, weightOf(firstRow, top, bottom));
        if (firstRow == lastRow)
            return;
        const PairBlend whole(channels, coverageOf(shares, pixelpair::both(LineUnit)));
        for (int y = firstRow + 1; y < lastRow; ++y)
            whole.apply(row(y) + x);
        blendRow(lastRow, weightOf(lastRow, top, bottom));
    };
    drawHorizontal(top);
    drawVertical(right);
    drawHorizontal(bottom);
    drawVertical(left);
}

// A line along the pixels: the same share of its coverage everywhere but at its ends.
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

ZEL_INLINE void Rasteriser::thinLine(QPointF a, QPointF b, const Stroke& stroke)
{
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
    start -= HalfPixel;
    across -= slope >> 1;
    end += HalfPixel;
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
    thinLine(from, to, {color, opacity});
}

ZEL_INLINE void Rasteriser::strokeAnyRect(const QRectF& rect, QRgb color, int opacity)
{
    const Stroke stroke{color, opacity};
    const int left = toLineUnits(m_mapping.x(rect.left()));
    const int top = toLineUnits(m_mapping.y(rect.top()));
    const int right = toLineUnits(m_mapping.x(rect.left() + rect.width()));
    const int bottom = toLineUnits(m_mapping.y(rect.top() + rect.height()));
    const bool isSmall = right > left && bottom > top && right - left < LargestSmallRect * LineUnit;
    if (isSmall
        && isWithinClip((left - HalfPixel) >> LineBits, (top - HalfPixel) >> LineBits,
            (right >> LineBits) + ColumnsAtOnce - 1, (bottom >> LineBits) + 1)) {
        strokeSmallRect(left, top, right, bottom, stroke);
        return;
    }
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

ZEL_INLINE void Rasteriser::drawAnyMask(const CoverageMask& mask, QRgb color)
{
    constexpr int Step = CoverageMask::ColumnsAtOnce;
    const PairChannels channels = pixelpair::ofColor(color);
    const int lastRow = std::min(mask.y + mask.height - 1, m_clip.bottom());
    for (int y = std::max(mask.y, m_clip.top()); y <= lastRow; ++y) {
        const std::uint8_t* covered = mask.coverage + static_cast<std::ptrdiff_t>(y - mask.y) * mask.width;
        for (int x = mask.x; x < mask.x + mask.width; x += Step, covered += Step) {
            std::uint32_t all = 0;
            std::memcpy(&all, covered, Step);
            if (all == 0)
                continue;
            if (x >= m_clip.left() && x + Step - 1 <= m_clip.right()) {
                PairChannels left;
                PairChannels right;
                pixelpair::spread(all, left, right);
                QuadBlend(channels, left, right).apply(row(y) + x);
                continue;
            }
            for (int i = 0; i < Step; ++i)
                blend(x + i, y, color, covered[i]);
        }
    }
}

struct Rasteriser::Avx2
{
    ZEL_AVX2 static void fillRect(Rasteriser& rasteriser, const QRectF& rect, QRgb color)
    {
        rasteriser.fillAnyRect(rect, color);
    }

    ZEL_AVX2 static void strokeRect(Rasteriser& rasteriser, const QRectF& rect, QRgb color, int opacity)
    {
        rasteriser.strokeAnyRect(rect, color, opacity);
    }

    ZEL_AVX2 static void drawLine(Rasteriser& rasteriser, const QLineF& line, QRgb color, int opacity)
    {
        rasteriser.drawAnyLine(line, color, opacity);
    }

    ZEL_AVX2 static void drawMask(Rasteriser& rasteriser, const CoverageMask& mask, QRgb color)
    {
        rasteriser.drawAnyMask(mask, color);
    }
};

void Rasteriser::fillRect(const QRectF& rect, QRgb color)
{
    m_hasAvx2 ? Avx2::fillRect(*this, rect, color) : fillAnyRect(rect, color);
}

void Rasteriser::strokeRect(const QRectF& rect, QRgb color, int opacity)
{
    m_hasAvx2 ? Avx2::strokeRect(*this, rect, color, opacity) : strokeAnyRect(rect, color, opacity);
}

void Rasteriser::drawLine(const QLineF& line, QRgb color, int opacity)
{
    m_hasAvx2 ? Avx2::drawLine(*this, line, color, opacity) : drawAnyLine(line, color, opacity);
}

void Rasteriser::drawMask(const CoverageMask& mask, QRgb color)
{
    m_hasAvx2 ? Avx2::drawMask(*this, mask, color) : drawAnyMask(mask, color);
}

} // namespace mirn::zelchipview
