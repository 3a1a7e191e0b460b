// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/coveragemask.h"

#include <cstdint>
#include <vector>

namespace mirn::zelchipview {

// Computes the coverage mask of a shape of moderate size from its edges. The result equals, pixel for pixel, what
// QPainter fills with antialiasing.
class CoverageGrid final
{
public:
    // Shapes with more pixels than this in either direction are left to QPainter: products of two lengths must fit
    // into 32 bits.
    static constexpr int LargestExtent = 120;

    // The sum of this many edges in one pixel fits into 31 bits.
    static constexpr int MostEdges = 4096;

    static constexpr int Unit = 256; // length units per pixel

    // In length units, from the image's top left corner.
    struct Corner
    {
        int x;
        int y;
    };

    // What is covered by edges that go around it twice: with the odd-even rule it is not, with the winding rule it is.
    enum class Rule { OddEven, Winding };

    // Returns the place of a coordinate, given in pixels, on the grid on which QPainter puts corners.
    [[nodiscard]] static int onGrid(double pixels);

    // Begins a mask that holds all corners between the least and the largest coordinates. Returns false if it would be
    // too large.
    [[nodiscard]] bool begin(Corner least, Corner most);

    // The edges make up closed outlines between the corners of begin().
    void addEdge(Corner from, Corner to);

    // Ends the mask, which is valid until the next one begins.
    CoverageMask finish(Rule rule);

private:
    // The contribution of the edges that pass a pixel to the coverage of this pixel and the pixels right of it.
    struct Cell
    {
        int height; // height of the edges; those that lead upwards count as negative
        int area; // twice the area left of them
    };

    void addUpright(Corner from, int toY);
    void addWithinRow(int row, Corner from, Corner to);
    void add(int row, int column, int fromX, int toX, int height);
    [[nodiscard]] static bool hasEdges(const Cell* cells);
    template <typename CoverageOf> void sumUp(CoverageOf coverageOf);

    std::vector<Cell> m_cells; // row by row; all 0 between two masks
    std::vector<std::uint8_t> m_coverage;
    int m_left = 0; // the mask's first column and row
    int m_top = 0;
    int m_width = 0;
    int m_height = 0;
};

} // namespace mirn::zelchipview
