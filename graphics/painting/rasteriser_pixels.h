// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/pixelblend.h"
#include "graphics/painting/rasteriser.h"

#include <algorithm>

// What rects, lines and masks come down to in the end: pixels one by one, in rows and in columns.

// All drawing is compiled twice, for every processor of a kind and for the newer ones, which draw a large picture in
// three quarters of the time. Instructions that multiply and add in one step round otherwise: the build forbids
// them everywhere.
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

namespace pixel {

constexpr int One = 1 << 16; // a pixel, as 16.16 fixed-point number
constexpr int LargestSmallRect = 16; // in pixels; small rects are drawn without a branch per pixel
constexpr int ColumnsAtOnce = CoverageMask::ColumnsAtOnce;

// Two of a pixel's channels at a time, each times `alpha` / 255, rounded as QPainter rounds it.
inline std::uint32_t scaledPair(std::uint32_t pair, unsigned alpha)
{
    const std::uint32_t product = pair * alpha;
    return ((product + ((product >> 8) & 0x00ff00ff) + 0x00800080) >> 8) & 0x00ff00ff;
}

inline std::uint32_t scaled(std::uint32_t pixel, unsigned alpha)
{
    return scaledPair(pixel & 0x00ff00ff, alpha) | (scaledPair((pixel >> 8) & 0x00ff00ff, alpha) << 8);
}

} // namespace pixel

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
