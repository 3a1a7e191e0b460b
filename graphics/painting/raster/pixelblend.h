// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

// Blends two or four neighbouring pixels at a time, which makes small shapes several times faster than pixel by pixel.
// It uses the vector types of GCC and Clang, which compile for every processor.
namespace mirn::zelchipview {

// The four channels of a pixel and those of its right neighbour; 0 to 255 each.
using PairChannels __attribute__((vector_size(16))) = std::uint16_t;

namespace pixelpair {

inline PairChannels of(unsigned left, unsigned right)
{
    const auto l = static_cast<std::uint16_t>(left);
    const auto r = static_cast<std::uint16_t>(right);
    return PairChannels{l, l, l, l, r, r, r, r};
}

inline PairChannels both(unsigned value)
{
    return of(value, value);
}

// Multiplies by `alpha` / 255 and rounds as QPainter does: to nearest, except for a few pairs of numbers.
inline PairChannels scaled(PairChannels channels, PairChannels alpha)
{
    const PairChannels product = channels * alpha;
    return (product + (product >> 8) + 0x80) >> 8;
}

#ifdef __SSE2__

inline PairChannels load(const std::uint32_t* pixels)
{
    const __m128i bytes = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(pixels));
    return reinterpret_cast<PairChannels>(_mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
}

inline void store(std::uint32_t* pixels, PairChannels channels)
{
    const auto words = reinterpret_cast<__m128i>(channels);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(pixels), _mm_packus_epi16(words, words));
}

inline void loadTwo(const std::uint32_t* pixels, PairChannels& left, PairChannels& right)
{
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pixels));
    left = reinterpret_cast<PairChannels>(_mm_unpacklo_epi8(bytes, _mm_setzero_si128()));
    right = reinterpret_cast<PairChannels>(_mm_unpackhi_epi8(bytes, _mm_setzero_si128()));
}

inline void storeTwo(std::uint32_t* pixels, PairChannels left, PairChannels right)
{
    const __m128i bytes = _mm_packus_epi16(reinterpret_cast<__m128i>(left), reinterpret_cast<__m128i>(right));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(pixels), bytes);
}

// Spreads four numbers, one per pixel in memory order, over all channels of their pixels.
inline void spread(std::uint32_t numbers, PairChannels& left, PairChannels& right)
{
    const __m128i once = _mm_cvtsi32_si128(static_cast<int>(numbers));
    const __m128i twice = _mm_unpacklo_epi8(once, once);
    const __m128i fourTimes = _mm_unpacklo_epi16(twice, twice);
    left = reinterpret_cast<PairChannels>(_mm_unpacklo_epi8(fourTimes, _mm_setzero_si128()));
    right = reinterpret_cast<PairChannels>(_mm_unpackhi_epi8(fourTimes, _mm_setzero_si128()));
}

#else

using Bytes __attribute__((vector_size(8))) = std::uint8_t;

inline PairChannels load(const std::uint32_t* pixels)
{
    Bytes bytes;
    std::memcpy(&bytes, pixels, sizeof bytes);
    return __builtin_convertvector(bytes, PairChannels);
}

inline void store(std::uint32_t* pixels, PairChannels channels)
{
    const Bytes bytes = __builtin_convertvector(channels, Bytes);
    std::memcpy(pixels, &bytes, sizeof bytes);
}

inline void loadTwo(const std::uint32_t* pixels, PairChannels& left, PairChannels& right)
{
    left = load(pixels);
    right = load(pixels + 2);
}

inline void storeTwo(std::uint32_t* pixels, PairChannels left, PairChannels right)
{
    store(pixels, left);
    store(pixels + 2, right);
}

inline void spread(std::uint32_t numbers, PairChannels& left, PairChannels& right)
{
    std::uint8_t bytes[sizeof numbers];
    std::memcpy(bytes, &numbers, sizeof numbers);
    left = of(bytes[0], bytes[1]);
    right = of(bytes[2], bytes[3]);
}

#endif

inline PairChannels ofColor(std::uint32_t color)
{
    const std::uint32_t pixels[] = {color, color};
    return load(pixels);
}

} // namespace pixelpair

// Blends a colour over two pixels.
class PairBlend
{
public:
    // Both arguments are per channel. The coverage is the share of the colour, 0 to 255.
    PairBlend(PairChannels color, PairChannels coverage)
        : m_added(pixelpair::scaled(color, coverage))
        , m_kept(255 - coverage)
    { }

    [[nodiscard]] PairChannels over(PairChannels below) const { return m_added + pixelpair::scaled(below, m_kept); }
    void apply(std::uint32_t* pixels) const { pixelpair::store(pixels, over(pixelpair::load(pixels))); }

private:
    PairChannels m_added;
    PairChannels m_kept;
};

// Blends a colour over four pixels.
class QuadBlend
{
public:
    QuadBlend(PairChannels color, PairChannels leftCoverage, PairChannels rightCoverage)
        : m_left(color, leftCoverage)
        , m_right(color, rightCoverage)
    { }

    void apply(std::uint32_t* pixels) const
    {
        PairChannels left;
        PairChannels right;
        pixelpair::loadTwo(pixels, left, right);
        pixelpair::storeTwo(pixels, m_left.over(left), m_right.over(right));
    }

private:
    PairBlend m_left;
    PairBlend m_right;
};

} // namespace mirn::zelchipview
