// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/rasteriser_pixels.h"

#if ZEL_IS_X86

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

// In a picture of a very large drawing most rects cover a few pixels only. With these instructions a register holds two
// rows of four pixels, so that such a rect is filled, gets its border and is written to the image once. The results are
// those of the other variants.

namespace mirn::zelchipview {

using namespace pixel;

namespace {

constexpr int RowsAtOnce = 2;
constexpr int MostRows = 2 * RowsAtOnce;

// Each is for two rows of four pixels, from left to right, the upper row first.
using Channels __attribute__((vector_size(64))) = std::uint16_t; // of each pixel
using Numbers __attribute__((vector_size(64))) = long long; // one for each pixel

constexpr Numbers Columns{0, 1, 2, 3, 0, 1, 2, 3};
constexpr Numbers Rows{0, 0, 0, 0, 1, 1, 1, 1};

// The forms of these instructions with a mask, here of all numbers, have no operand that a compiler could take for
// uninitialised.
constexpr __mmask8 EachNumber = 0xff;
constexpr __mmask32 EachChannel = 0xffffffff;
constexpr __mmask16 EachHalf = 0xffff; // of a number
constexpr __mmask64 EachByte = 0xffffffffffffffff;

ZEL_AVX512 inline Numbers minimum(Numbers a, Numbers b)
{
    return reinterpret_cast<Numbers>(_mm512_maskz_min_epi64(EachNumber, a, b));
}

ZEL_AVX512 inline Numbers maximum(Numbers a, Numbers b)
{
    return reinterpret_cast<Numbers>(_mm512_maskz_max_epi64(EachNumber, a, b));
}

// Repeats a byte of each number, the one at `place`, in the four channels of a pixel.
ZEL_AVX512 inline Channels overChannels(Numbers numbers, char place)
{
    const char none = static_cast<char>(0x80);
    const char next = static_cast<char>(place + 8);
    const __m512i places = _mm512_maskz_broadcast_i32x4(EachHalf,
        _mm_setr_epi8(
            place, none, place, none, place, none, place, none, next, none, next, none, next, none, next, none));
    return reinterpret_cast<Channels>(_mm512_maskz_shuffle_epi8(EachByte, numbers, places));
}

// Returns how much of each column or row of pixels lies between two ends. A pixel is `unit` wide.
ZEL_AVX512 inline Numbers partsOf(Numbers pixels, int unit, int start, int end)
{
    const Numbers from = pixels * unit;
    return maximum(minimum(from + unit, Numbers{} + end) - maximum(from, Numbers{} + start), Numbers{});
}

// Returns the same for line units.
ZEL_AVX512 inline Channels weightsOf(Numbers pixels, int start, int end)
{
    return overChannels(partsOf(pixels, LineUnit, start, end), 0);
}

// Returns the shares (0 to 255) of the two columns or rows of pixels beside the middle of a line.
ZEL_AVX512 inline Channels sharesBeside(Numbers pixels, int middle)
{
    const int first = (middle - HalfPixel) >> LineBits;
    const int share = secondShare(middle);
    return overChannels(((pixels == first) & (255 - share)) | ((pixels == first + 1) & share), 0);
}

ZEL_AVX512 inline Channels channelsOf(__m256i pixels)
{
    return reinterpret_cast<Channels>(_mm512_maskz_cvtepu8_epi16(EachChannel, pixels));
}

ZEL_AVX512 inline __m256i pixelsOf(Channels channels)
{
    return _mm512_maskz_cvtepi16_epi8(EachChannel, reinterpret_cast<__m512i>(channels));
}

ZEL_AVX512 inline Channels scaled(Channels channels, Channels alpha)
{
    const Channels product = channels * alpha;
    return (product + (product >> 8) + 0x80) >> 8;
}

ZEL_AVX512 inline Channels blended(Channels below, Channels color, Channels coverage)
{
    return scaled(color, coverage) + scaled(below, 255 - coverage);
}

// Draws parts of a thin line of one colour.
class ThinLine
{
public:
    ZEL_AVX512 ThinLine(QRgb color, int opacity)
        : m_color(channelsOf(_mm256_set1_epi32(static_cast<int>(color))))
        , m_opacity(Channels{} + static_cast<std::uint16_t>(opacity))
    { }

    // `shares` are 0 to 255, `weights` 0 to 64.
    ZEL_AVX512 void draw(Channels& shown, Channels shares, Channels weights) const
    {
        const Channels coverage = (shares * weights) >> LineBits;
        shown = blended(shown, m_color, (coverage * m_opacity) >> 8);
    }

private:
    Channels m_color;
    Channels m_opacity;
};

// Four columns of one to four rows of pixels.
class FewPixels
{
public:
    ZEL_AVX512 FewPixels(std::uint32_t* first, qsizetype bytesPerLine, int rows)
        : m_first(reinterpret_cast<unsigned char*>(first))
        , m_bytesPerLine(bytesPerLine)
        , m_rows(rows)
    { }

    ZEL_AVX512 Channels pair(int number) const
    {
        return channelsOf(_mm256_inserti128_si256(_mm256_castsi128_si256(_mm_loadu_si128(row(RowsAtOnce * number))),
            _mm_loadu_si128(row(RowsAtOnce * number + 1)), 1));
    }

    // If there is no lower row, the upper one is written over what was meant for it.
    ZEL_AVX512 void setPair(int number, Channels channels)
    {
        const __m256i pixels = pixelsOf(channels);
        _mm_storeu_si128(row(RowsAtOnce * number + 1), _mm256_extracti128_si256(pixels, 1));
        _mm_storeu_si128(row(RowsAtOnce * number), _mm256_castsi256_si128(pixels));
    }

private:
    ZEL_AVX512 __m128i* row(int number) const
    {
        return reinterpret_cast<__m128i*>(m_first + (number < m_rows ? number : m_rows - 1) * m_bytesPerLine);
    }

    unsigned char* const m_first;
    const qsizetype m_bytesPerLine;
    const int m_rows;
};

} // namespace

struct Rasteriser::Avx512Rects::Block
{
    // Returns whether the block holds all pixels of what is filled.
    ZEL_AVX512 bool holds(const Sides& filled) const
    {
        const bool isAround = filled.left >= x * One && filled.right < (x + ColumnsAtOnce) * One
            && filled.top >= y * One && filled.bottom < (y + rows) * One;
        return rows <= MostRows && (isAround || filled.isEmpty());
    }

    template <bool HasLine>
    ZEL_AVX512 void draw(
        const Rasteriser& on, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke) const
    {
        const Sides inside = filled.relativeTo(x * One, y * One);
        const Sides around = line.relativeTo(x * LineUnit, y * LineUnit);
        if (on.isWithinClip(x, y, x + ColumnsAtOnce - 1, y + rows - 1))
            drawOn<HasLine>(FewPixels(on.row(y) + x, on.m_bytesPerLine, rows), inside, color, around, stroke);
        else
            drawCut<HasLine>(on, inside, color, around, stroke);
    }

    // Draws on a copy of the pixels, of which those within the clip are written back. Stores with a mask would do without
    // the copy, but GCC 12 merges them into instructions that fail at memory which is not there.
    template <bool HasLine>
    [[gnu::noinline]] ZEL_AVX512 void drawCut(
        const Rasteriser& on, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke) const
    {
        const QRect within = on.m_clip & QRect(x, y, ColumnsAtOnce, rows);
        if (within.isEmpty())
            return;
        std::uint32_t copy[MostRows][ColumnsAtOnce] = {};
        const std::size_t size = sizeof(std::uint32_t) * within.width();
        for (int n = within.top(); n <= within.bottom(); ++n)
            std::memcpy(&copy[n - y][within.left() - x], on.row(n) + within.left(), size);
        drawOn<HasLine>(FewPixels(copy[0], sizeof copy[0], rows), filled, color, line, stroke);
        for (int n = within.top(); n <= within.bottom(); ++n)
            std::memcpy(on.row(n) + within.left(), &copy[n - y][within.left() - x], size);
    }

    template <bool HasLine>
    ZEL_AVX512 ZEL_INLINE void drawOn(
        FewPixels pixels, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke) const
    {
        if (rows <= RowsAtOnce)
            drawPairs<1, HasLine>(pixels, filled, color, line, stroke);
        else
            drawPairs<2, HasLine>(pixels, filled, color, line, stroke);
    }

    // All sides are relative to the first of the pixels.
    template <int Pairs, bool HasLine>
    ZEL_AVX512 ZEL_INLINE static void drawPairs(
        FewPixels pixels, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke)
    {
        Channels shown[Pairs];
        const Numbers width = partsOf(Columns, One, filled.left, filled.right);
        const Numbers coverage = (width << 8) - width; // times 255
        const Channels fill = channelsOf(_mm256_set1_epi32(static_cast<int>(color)));
        for (int n = 0; n < Pairs; ++n) {
            const Numbers height = partsOf(Rows + RowsAtOnce * n, One, filled.top, filled.bottom);
            const auto product = reinterpret_cast<Numbers>(_mm512_maskz_mul_epu32(EachNumber, coverage, height));
            constexpr char UpperHalf = 4; // has the whole part of the product of two 16.16 numbers
            shown[n] = blended(pixels.pair(n), fill, overChannels(product, UpperHalf));
        }
        if constexpr (HasLine)
            drawLines(shown, line, stroke);
        for (int n = 0; n < Pairs; ++n)
            pixels.setPair(n, shown[n]);
    }

    template <int Pairs>
    ZEL_AVX512 ZEL_INLINE static void drawLines(Channels (&shown)[Pairs], const Sides& line, const Stroke& stroke)
    {
        const ThinLine thin(stroke.color, stroke.opacity);
        const Channels across = weightsOf(Columns, line.left, line.right);
        const Channels right = sharesBeside(Columns, line.right);
        const Channels left = sharesBeside(Columns, line.left);
        thin.draw(shown[0], sharesBeside(Rows, line.top), across);
        for (int n = 0; n < Pairs; ++n) {
            const Numbers rowsOfPair = Rows + RowsAtOnce * n;
            const Channels down = weightsOf(rowsOfPair, line.top, line.bottom);
            thin.draw(shown[n], right, down);
            thin.draw(shown[n], sharesBeside(rowsOfPair, line.bottom), across);
            thin.draw(shown[n], left, down);
        }
    }

    int x; // the first of its columns, of which it has ColumnsAtOnce
    int y;
    int rows;
};

ZEL_AVX512 bool Rasteriser::Avx512Rects::fill(const Rasteriser& on, const Sides& filled, QRgb color)
{
    const int top = filled.top >> OneBits;
    const Block block{filled.left >> OneBits, top, (filled.bottom >> OneBits) + 1 - top};
    if (!block.holds(filled))
        return false;
    block.draw<false>(on, filled, color, {}, {});
    return true;
}

ZEL_AVX512 bool Rasteriser::Avx512Rects::draw(
    const Rasteriser& on, const Sides& filled, QRgb color, const Sides& line, const Stroke& stroke)
{
    // A line covers a pixel on both sides of its middle.
    const auto [left, top, right, bottom] = line.relativeTo(HalfPixel, HalfPixel);
    const Block block{left >> LineBits, top >> LineBits, (bottom >> LineBits) + 2 - (top >> LineBits)};
    if ((right >> LineBits) + 2 - block.x > ColumnsAtOnce || left >= right || top >= bottom || !block.holds(filled))
        return false;
    block.draw<true>(on, filled, color, line, stroke);
    return true;
}

} // namespace mirn::zelchipview

#endif
