// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/pixelblend.h"
#include "graphics/painting/raster/rasteriser.h"

#include <algorithm>

// The innermost operations of rects, lines and masks: blending single pixels, rows and columns.

// All drawing is compiled twice: for every processor of the architecture, and for newer ones, which draw a large
// picture in three quarters of the time. Rects of a few pixels have a third variant. Fused multiply-add instructions
// round differently, so the build disables them everywhere.
#if defined(__x86_64__)
#define ZEL_IS_X86 1
#define ZEL_AVX2 __attribute__((target("avx2")))
#define ZEL_HAS_AVX2 __builtin_cpu_supports("avx2")
// Processors with AVX-512 but without this part of it slow down their clock for it.
#define ZEL_AVX512 __attribute__((target("avx512f,avx512bw,avx512dq,avx512vl,avx512vbmi2")))
#define ZEL_HAS_AVX512                                                                                                 \
    (__builtin_cpu_supports("avx512bw") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl")    \
        && __builtin_cpu_supports("avx512vbmi2"))
#else
#define ZEL_IS_X86 0
#define ZEL_AVX2
#define ZEL_HAS_AVX2 false
#define ZEL_AVX512
#define ZEL_HAS_AVX512 false
#endif
// Functions that several variants call are inlined into them: a separate function would be compiled for every processor
// only.
#define ZEL_INLINE __attribute__((always_inline)) inline

namespace mirn::zelchipview {

namespace pixel {

constexpr int OneBits = 16;
constexpr int One = 1 << OneBits; // a pixel as a 16.16 fixed-point number
constexpr int LargestSmallRect = 16; // in pixels; small rects are drawn without a branch per pixel
constexpr int ColumnsAtOnce = CoverageMask::ColumnsAtOnce;

// Thin lines have units of their own.
constexpr int LineUnit = 64; // line units per pixel
constexpr int LineBits = 6;
constexpr int HalfPixel = LineUnit / 2;

// Returns the share (0 to 255) that a line has in the second of the two rows or columns of pixels beside its middle,
// which is in line units. The first one has the rest.
inline int secondShare(int middle)
{
    return ((middle - HalfPixel) & (LineUnit - 1)) * 4;
}

// Multiplies two of a pixel's channels at a time by `alpha` / 255 and rounds as QPainter does.
inline std::uint32_t scaledPair(std::uint32_t pair, unsigned alpha)
{
    const std::uint32_t product = pair * alpha;
    return ((product + ((product >> 8) & 0x00ff00ff) + 0x00800080) >> 8) & 0x00ff00ff;
}

inline std::uint32_t scaled(std::uint32_t pixel, unsigned alpha)
{
    return scaledPair(pixel & 0x00ff00ff, alpha) | (scaledPair((pixel >> 8) & 0x00ff00ff, alpha) << 8);
}

inline int toLineUnits(double value)
{
    return static_cast<int>(value * LineUnit);
}

} // namespace pixel

// The coverage of pixels along one axis of a rect: partial in the first and the last pixel, full between them.
struct Rasteriser::Extent
{
    Extent(double from, double to)
        : first(static_cast<int>(from))
        , last(static_cast<int>(to))
        , start(static_cast<std::int64_t>(from * pixel::One))
        , end(static_cast<std::int64_t>(to * pixel::One))
    { }

    // Returns the covered part of a pixel as a 16.16 number.
    [[nodiscard]] std::int64_t partOf(int pixel) const
    {
        const std::int64_t begin = std::int64_t(pixel) * pixel::One;
        return std::min(begin + pixel::One, end) - std::max(begin, start);
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

// The sides of a rect, in 16.16 numbers or in line units.
struct Rasteriser::Sides
{
    [[nodiscard]] Sides relativeTo(int x, int y) const { return {left - x, top - y, right - x, bottom - y}; }
    [[nodiscard]] bool isEmpty() const { return left >= right; }

    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
};

// Draws small rects with AVX2 instructions; see fillSmallRect() and strokeSmallRect(). Lengths of strokes are in line
// units.
struct Rasteriser::Avx2SmallRects
{
    static void fill(const Rasteriser& on, const Extent& across, const Extent& down, QRgb color);
    static void strokeAcross(const Rasteriser& on, int left, int right, int middle, const Stroke& stroke);
};

// Draws rects of up to four pixels by four with AVX-512 instructions: the part to fill, in 16.16 numbers, which may be
// empty if there is a line around it, in line units. Returns false and draws nothing if the rect is larger.
struct Rasteriser::Avx512Rects
{
    static bool fill(const Rasteriser& on, const Sides& filled, QRgb color);
    static bool draw(const Rasteriser& on, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke);

private:
    struct Block; // the pixels of such a rect
};

ZEL_INLINE Rasteriser::Sides Rasteriser::lineAround(const QRectF& rect) const
{
    return {pixel::toLineUnits(m_mapping.x(rect.left())), pixel::toLineUnits(m_mapping.y(rect.top())),
        pixel::toLineUnits(m_mapping.x(rect.left() + rect.width())),
        pixel::toLineUnits(m_mapping.y(rect.top() + rect.height()))};
}

ZEL_INLINE std::uint32_t* Rasteriser::row(int y) const
{
    return reinterpret_cast<std::uint32_t*>(m_bits + y * m_bytesPerLine);
}

ZEL_INLINE void Rasteriser::blend(int x, int y, QRgb color, unsigned coverage)
{
    if (coverage == 0 || x < m_clip.left() || x > m_clip.right() || y < m_clip.top() || y > m_clip.bottom())
        return;
    std::uint32_t& shown = row(y)[x];
    shown = pixel::scaled(color, coverage) + pixel::scaled(shown, 255 - coverage);
}

// `left` and `right` must lie within the clip.
ZEL_INLINE void Rasteriser::blendRow(int left, int right, int y, QRgb color, unsigned coverage)
{
    std::uint32_t* pixels = row(y);
    if (coverage == 255) {
        std::fill(pixels + left, pixels + right + 1, color);
        return;
    }
    if (coverage == 0)
        return;
    const std::uint32_t source = pixel::scaled(color, coverage);
    for (int x = left; x <= right; ++x)
        pixels[x] = source + pixel::scaled(pixels[x], 255 - coverage);
}

ZEL_INLINE void Rasteriser::blendColumn(int x, int top, int bottom, QRgb color, unsigned coverage)
{
    if (coverage == 0)
        return;
    const std::uint32_t source = pixel::scaled(color, coverage);
    for (int y = top; y <= bottom; ++y) {
        std::uint32_t& shown = row(y)[x];
        shown = source + pixel::scaled(shown, 255 - coverage);
    }
}

ZEL_INLINE bool Rasteriser::isWithinClip(int left, int top, int right, int bottom) const
{
    return left >= m_clip.left() && right <= m_clip.right() && top >= m_clip.top() && bottom <= m_clip.bottom();
}

} // namespace mirn::zelchipview
