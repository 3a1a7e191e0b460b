// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace mirn::zelchipview {

// How much of each pixel of a rectangle a shape covers.
struct CoverageMask
{
    // Masks are blended by so many columns at a time; columns that the shape does not reach are 0.
    static constexpr int ColumnsAtOnce = 4;

    [[nodiscard]] static constexpr int paddedWidth(int columns)
    {
        return (columns + ColumnsAtOnce - 1) / ColumnsAtOnce * ColumnsAtOnce;
    }

    int x; // of the top left pixel in the image
    int y;
    int width; // a padded one
    int height;
    const std::uint8_t* coverage; // 0 to 255 per pixel, row by row; not owned
};

} // namespace mirn::zelchipview
