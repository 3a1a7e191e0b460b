// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace mirn::zelchipview {

// The coverage of each pixel of a rectangle by a shape.
struct CoverageMask
{
    // Masks are blended this many columns at a time, so their width is padded to a multiple of it with columns of 0.
    static constexpr int ColumnsAtOnce = 4;

    [[nodiscard]] static constexpr int paddedWidth(int columns)
    {
        return (columns + ColumnsAtOnce - 1) / ColumnsAtOnce * ColumnsAtOnce;
    }

    int x; // column of the top left pixel in the image
    int y;
    int width; // padded
    int height;
    const std::uint8_t* coverage; // 0 to 255 per pixel, row by row; not owned
};

// A mask of which some pixels stand for many: from there on, the shape looks the same for a while.
struct StretchedMask
{
    CoverageMask mask;
    int column; // ColumnsAtOnce columns from here on stand for as many and `moreColumns`
    int moreColumns;
    int row; // stands for 1 + `moreRows`
    int moreRows;
};

} // namespace mirn::zelchipview
