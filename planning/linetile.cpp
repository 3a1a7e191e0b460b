// SPDX-License-Identifier: MIT
#include "planning/linetile.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace mirn::zelchipview {

namespace {

// The pixels lie in upright stripes, each row by row: what a scroll to the side brings into sight is then a sequence of
// addresses, which the processor foresees.
constexpr int StripeBits = 6;
constexpr int StripeWidth = 1 << StripeBits;
constexpr int StripeBytes = StripeWidth * LineTile::Size;

constexpr int FixedBits = 30; // bits of a coordinate behind the point
constexpr std::int64_t FixedOne = std::int64_t(1) << FixedBits; // negative values must not be shifted to the left

// Both are from 0 to Size - 1; a shift takes less time than a division of numbers that may be negative.
int offsetOf(int x, int y)
{
    return (x >> StripeBits) * StripeBytes + y * StripeWidth + (x & (StripeWidth - 1));
}

// The pixels of a line that lie in the tile: one for each step of its longer direction from `first` to `last`. The
// other coordinate begins with `beside` and grows by `slope`. The steps outside are left out without being gone
// through, because most long lines miss most of the tiles around them.
struct LineSteps
{
    LineSteps(int a0, int b0, int a1, int b1)
        : slope(a1 == a0 ? 0 : (b1 - b0) * FixedOne / (a1 - a0))
        , first(std::max(a0, 0))
        , last(std::min(a1, LineTile::Size - 1))
        , beside(b0 * FixedOne + FixedOne / 2 + slope * (first - a0))
    {
        constexpr std::int64_t End = LineTile::Size * FixedOne;
        if (beside < 0)
            skip(slope > 0 ? (-beside + slope - 1) / slope : LineTile::Size);
        else if (beside >= End)
            skip(slope < 0 ? (beside - End) / -slope + 1 : LineTile::Size);
        if (first > last)
            return;
        if (slope > 0 && beside + slope * (last - first) >= End)
            last = first + static_cast<int>((End - 1 - beside) / slope);
        else if (slope < 0 && beside + slope * (last - first) < 0)
            last = first + static_cast<int>(beside / -slope);
    }

    void skip(std::int64_t steps)
    {
        steps = std::min<std::int64_t>(steps, LineTile::Size);
        first += static_cast<int>(steps);
        beside += steps * slope;
    }

    std::int64_t slope;
    int first;
    int last;
    std::int64_t beside;
};

void drawFlat(std::uint8_t* pixels, const LineSteps& line, std::uint8_t color)
{
    std::int64_t y = line.beside;
    for (int x = line.first; x <= line.last;) {
        const int end = std::min(line.last + 1, (x / StripeWidth + 1) * StripeWidth);
        std::uint8_t* stripe = pixels + offsetOf(x, 0);
        for (; x < end; ++x, ++stripe, y += line.slope)
            stripe[(y >> FixedBits) * StripeWidth] = color;
    }
}

void drawSteep(std::uint8_t* pixels, const LineSteps& line, std::uint8_t color)
{
    std::int64_t x = line.beside;
    std::uint8_t* row = pixels + offsetOf(0, line.first);
    for (int y = line.first; y <= line.last; ++y, row += StripeWidth, x += line.slope)
        row[offsetOf(static_cast<int>(x >> FixedBits), 0)] = color;
}

// Returns whether there is a line. Most pixels are without one, so several at a time are asked for it.
bool readRow(const std::uint8_t* row, int width, const std::array<QRgb, LineTile::Colors>& colors, QRgb* pixels)
{
    using Word = std::uint64_t;
    constexpr int AtOnce = sizeof(Word);
    Word any = 0;
    int x = 0;
    for (; x + AtOnce <= width; x += AtOnce) {
        Word word = 0;
        std::memcpy(&word, row + x, AtOnce);
        if (word == 0) {
            std::memset(pixels + x, 0, AtOnce * sizeof(QRgb));
            continue;
        }
        any |= word;
        for (int i = 0; i < AtOnce; ++i)
            pixels[x + i] = colors[row[x + i]];
    }
    for (; x < width; ++x) {
        any |= row[x];
        pixels[x] = colors[row[x]];
    }
    return any != 0;
}

} // namespace

LineTile::LineTile()
    : m_pixels(std::size_t(Size) * Size)
{ }

void LineTile::clear()
{
    std::fill(m_pixels.begin(), m_pixels.end(), std::uint8_t(0));
}

void LineTile::draw(QPoint from, QPoint to, std::uint8_t color)
{
    const bool isFlat = std::abs(to.x() - from.x()) >= std::abs(to.y() - from.y());
    if (isFlat ? from.x() > to.x() : from.y() > to.y())
        std::swap(from, to);
    if (isFlat)
        drawFlat(m_pixels.data(), {from.x(), from.y(), to.x(), to.y()}, color);
    else
        drawSteep(m_pixels.data(), {from.y(), from.x(), to.y(), to.x()}, color);
}

bool LineTile::read(const QRect& part, const std::array<QRgb, Colors>& colors, QRgb* pixels) const
{
    bool isAny = false;
    for (int left = part.left(); left <= part.right(); left = (left / StripeWidth + 1) * StripeWidth) {
        const int width = std::min(part.right() + 1, (left / StripeWidth + 1) * StripeWidth) - left;
        QRgb* to = pixels + (left - part.left());
        for (int y = part.top(); y <= part.bottom(); ++y, to += part.width())
            isAny = readRow(m_pixels.data() + offsetOf(left, y), width, colors, to) || isAny;
    }
    return isAny;
}

} // namespace mirn::zelchipview
