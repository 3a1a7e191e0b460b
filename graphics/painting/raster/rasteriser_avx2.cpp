// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/rasteriser_pixels.h"

#if ZEL_IS_X86

#include <immintrin.h>

// Small rects make up most of a chip drawing. With these instructions, four pixels fit into one register, in 16 bits
// per channel, and the coverage of four columns is computed at once. The results are those of the other variant.

namespace mirn::zelchipview {

using namespace pixel;

namespace {

// Repeats a byte of each 64-bit number, the one at `place`, in the four channels of a pixel.
ZEL_AVX2 inline __m256i overChannels(__m256i numbers, char place)
{
    const char none = static_cast<char>(0x80);
    const char next = static_cast<char>(place + 8);
    return _mm256_shuffle_epi8(numbers,
        _mm256_setr_epi8(place, none, place, none, place, none, place, none, next, none, next, none, next, none, next,
            none, place, none, place, none, place, none, place, none, next, none, next, none, next, none, next, none));
}

ZEL_AVX2 inline __m256i channelsOf(QRgb color)
{
    return _mm256_cvtepu8_epi16(_mm_set1_epi32(static_cast<int>(color)));
}

// Returns how much of each of four columns lies between `start` and `end`. A column is `unit` wide, and `x` is the
// number of the first one.
ZEL_AVX2 inline __m128i partsOf(int x, int unit, int start, int end)
{
    const __m128i left = _mm_add_epi32(_mm_set1_epi32(x * unit), _mm_setr_epi32(0, unit, 2 * unit, 3 * unit));
    const __m128i right = _mm_add_epi32(left, _mm_set1_epi32(unit));
    const __m128i part
        = _mm_sub_epi32(_mm_min_epi32(right, _mm_set1_epi32(end)), _mm_max_epi32(left, _mm_set1_epi32(start)));
    return _mm_max_epi32(part, _mm_setzero_si128());
}

// Blends a colour over four pixels; see QuadBlend.
class FourPixels
{
public:
    ZEL_AVX2 FourPixels(__m256i color, __m256i coverage)
        : m_added(scaled(color, coverage))
        , m_kept(_mm256_sub_epi16(_mm256_set1_epi16(255), coverage))
    { }

    ZEL_AVX2 void apply(std::uint32_t* pixels) const
    {
        auto* place = reinterpret_cast<__m128i*>(pixels);
        const __m256i below = _mm256_cvtepu8_epi16(_mm_loadu_si128(place));
        const __m256i sum = _mm256_add_epi16(m_added, scaled(below, m_kept));
        _mm_storeu_si128(place, packed(sum));
    }

    // Whether nothing of what is below remains; cover() is enough then.
    ZEL_AVX2 bool isOpaque() const { return _mm256_testz_si256(m_kept, m_kept) != 0; }
    ZEL_AVX2 void cover(std::uint32_t* pixels) const
    {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), packed(m_added));
    }

private:
    ZEL_AVX2 static __m128i packed(__m256i channels)
    {
        return _mm_packus_epi16(_mm256_castsi256_si128(channels), _mm256_extracti128_si256(channels, 1));
    }

    ZEL_AVX2 static __m256i scaled(__m256i channels, __m256i alpha)
    {
        const __m256i product = _mm256_mullo_epi16(channels, alpha);
        const __m256i rounded = _mm256_add_epi16(product, _mm256_set1_epi16(0x80));
        return _mm256_srli_epi16(_mm256_add_epi16(rounded, _mm256_srli_epi16(product, 8)), 8);
    }

    __m256i m_added;
    __m256i m_kept;
};

} // namespace

ZEL_AVX2 void Rasteriser::Avx2SmallRects::fill(
    const Rasteriser& on, const Extent& across, const Extent& down, QRgb color)
{
    const __m256i channels = channelsOf(color);
    const int start = static_cast<int>(across.start);
    const int end = static_cast<int>(across.end);
    const auto firstHeight = static_cast<int>(down.partOf(down.first));
    const auto lastHeight = static_cast<int>(down.partOf(down.last));
    for (int x = across.first; x <= across.last; x += ColumnsAtOnce) {
        const __m128i part = partsOf(x, One, start, end);
        const __m256i coverage = _mm256_cvtepu32_epi64(_mm_sub_epi32(_mm_slli_epi32(part, 8), part)); // times 255
        // The product of two 16.16 numbers has its whole part in the upper half.
        constexpr char UpperHalf = 4;
        const FourPixels first(
            channels, overChannels(_mm256_mul_epu32(coverage, _mm256_set1_epi64x(firstHeight)), UpperHalf));
        first.apply(on.row(down.first) + x);
        if (down.first == down.last)
            continue;
        const FourPixels whole(channels, overChannels(_mm256_mul_epu32(coverage, _mm256_set1_epi64x(One)), UpperHalf));
        const bool isCovered = whole.isOpaque();
        for (int y = down.first + 1; y < down.last; ++y)
            isCovered ? whole.cover(on.row(y) + x) : whole.apply(on.row(y) + x);
        const FourPixels last(
            channels, overChannels(_mm256_mul_epu32(coverage, _mm256_set1_epi64x(lastHeight)), UpperHalf));
        last.apply(on.row(down.last) + x);
    }
}

namespace {

// Draws thin lines of a rect; see Rasteriser::strokeSmallRect(). `Bits` are those of a line unit.
class SmallStroke
{
public:
    ZEL_AVX2 SmallStroke(QRgb color, int opacity)
        : m_color(channelsOf(color))
        , m_opacity(_mm256_set1_epi16(static_cast<short>(opacity)))
    { }

    // `share` (0 to 255) and `weights` (0 to 64) are per channel.
    ZEL_AVX2 FourPixels blendOf(__m256i shares, __m256i weights) const
    {
        const __m256i coverage = _mm256_srli_epi16(_mm256_mullo_epi16(shares, weights), LineBits);
        return FourPixels(m_color, _mm256_srli_epi16(_mm256_mullo_epi16(coverage, m_opacity), 8));
    }

private:
    __m256i m_color;
    __m256i m_opacity;
};

} // namespace

ZEL_AVX2 void Rasteriser::Avx2SmallRects::strokeAcross(
    const Rasteriser& on, int left, int right, int middle, const Stroke& stroke)
{
    const SmallStroke thin(stroke.color, stroke.opacity);
    const int share = secondShare(middle);
    const __m256i upper = _mm256_set1_epi16(static_cast<short>(255 - share));
    const __m256i lower = _mm256_set1_epi16(static_cast<short>(share));
    const int y = (middle - HalfPixel) >> LineBits;
    const int lastColumn = (right - 1) >> LineBits;
    for (int x = left >> LineBits; x <= lastColumn; x += ColumnsAtOnce) {
        const __m256i weights = overChannels(_mm256_cvtepu32_epi64(partsOf(x, LineUnit, left, right)), 0);
        thin.blendOf(upper, weights).apply(on.row(y) + x);
        thin.blendOf(lower, weights).apply(on.row(y + 1) + x);
    }
}

} // namespace mirn::zelchipview

#endif
