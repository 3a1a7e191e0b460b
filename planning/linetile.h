// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QRect>
#include <QRgb>

#include <array>
#include <cstdint>
#include <vector>

namespace mirn::zelchipview {

// A square part of the picture of very many lines. A pixel is the number of a colour in one byte, or 0 where there is
// no line: lines have few colours, and what a scroll brings into sight has to pass through the processor's caches.
class LineTile final
{
public:
    static constexpr int Size = 512; // pixels
    static constexpr int Colors = 5; // with that of no line

    LineTile();

    void clear();

    // Draws the pixels of a line that lie in the tile, with its top left pixel at (0, 0). They do not depend on where
    // the tile is: each is computed from the line's ends alone. `color` is from 1 to Colors - 1.
    void draw(QPoint from, QPoint to, std::uint8_t color);

    // Writes the colours of a part of the tile, row by row and premultiplied. Returns false, and may not have written
    // everything, if there is no line.
    bool read(const QRect& part, const std::array<QRgb, Colors>& colors, QRgb* pixels) const;

private:
    std::vector<std::uint8_t> m_pixels; // row by row
};

} // namespace mirn::zelchipview
