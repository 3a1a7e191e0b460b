// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/coveragemask.h"
#include "graphics/painting/raster/rasteriser.h"

#include <QPointF>

#include <cstdint>
#include <vector>

namespace mirn::zelchipview {

// Computes the coverage masks of polygons of moderate size. The result equals, pixel for pixel, what QPainter draws
// with antialiasing and the odd-even rule.
class PolygonCoverage final
{
public:
    // Polygons with more pixels than this in either direction are left to QPainter: products of two lengths must fit
    // into 32 bits.
    static constexpr int LargestExtent = 120;

    // Takes a polygon in scene coordinates, its last corner joined with the first. Returns false for one that must be
    // left to QPainter: it is too large or too far away, has thousands of corners or coordinates that are not finite,
    // or may be a rect, which has other rules.
    [[nodiscard]] bool make(const QPointF* corners, int count, const Rasteriser::Mapping& mapping);

    // Returns the mask of the polygon that make() took last. It is valid until the next call of make().
    [[nodiscard]] CoverageMask mask() const;

private:
    struct Corner // in 1/256 of a pixel, from the mask's top left pixel
    {
        int x;
        int y;
    };

    // The contribution of the edges that pass a pixel to the coverage of this pixel and the pixels right of it.
    struct Cell
    {
        int height; // height of the edges; those that lead upwards count as negative
        int area; // twice the area left of them
    };

    void addEdge(Corner from, Corner to);
    void addWithinRow(int row, Corner from, Corner to);
    void add(int row, int column, int fromX, int toX, int height);
    void sumUp();

    std::vector<Corner> m_corners;
    std::vector<Cell> m_cells; // row by row; all 0 between two polygons
    std::vector<std::uint8_t> m_coverage;
    int m_left = 0; // the mask's first column and row
    int m_top = 0;
    int m_width = 0;
    int m_height = 0;
};

} // namespace mirn::zelchipview
