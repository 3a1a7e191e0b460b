// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/polygoncoverage.h"

#include <algorithm>
#include <cmath>

// These rules were found by observing what QPainter draws, and a test compares the two. Corners lie on a grid of 1/64
// of a pixel. The point where an edge passes from one row or column of pixels to the next is rounded down, seen from
// the start of the edge, to 1/256 of a pixel. Between these points the covered area is exact; the coverage of a pixel
// is that area truncated to 1/256.

namespace mirn::zelchipview {

namespace {

constexpr int CornerGrid = 64; // grid points per pixel
constexpr int Unit = 256; // length units per pixel
constexpr int UnitBits = 8;

constexpr int FewestCorners = 3;
constexpr int MostCorners = 4096; // the sum of this many edges in one pixel fits into 31 bits
constexpr int MostCornersOfRects = 5;

// `divisor` must be > 0.
int roundedDown(int dividend, int divisor)
{
    const int quotient = dividend / divisor;
    return quotient - (dividend % divisor < 0 ? 1 : 0);
}

// Rounds to the nearest grid point. Qt 6 rounds halves away from 0, Qt 5 upwards.
int onGrid(double pixels)
{
    const double places = pixels * CornerGrid;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return static_cast<int>(places + std::copysign(0.5, places)) * (Unit / CornerGrid);
#else
    return static_cast<int>(std::floor(places + 0.5)) * (Unit / CornerGrid);
#endif
}

bool isNear(double pixels)
{
    return std::abs(pixels) < Rasteriser::Farthest;
}

// QPainter applies the rules for rects to polygons that are rects.
bool mayBeRect(const QPointF* corners, int count)
{
    if (count > MostCornersOfRects)
        return false;
    for (int i = 0; i + 1 < count; ++i) {
        if (corners[i].x() != corners[i + 1].x() && corners[i].y() != corners[i + 1].y())
            return false;
    }
    return true;
}

// Converts an area to a coverage of 0 to 255. `area` is signed and counts 2 * Unit * Unit for a whole pixel.
std::uint8_t coverageOf(int area)
{
    // The odd-even rule: an area that is covered twice is not covered.
    const int part = std::abs(area >> (UnitBits + 1)) & (2 * Unit - 1);
    return static_cast<std::uint8_t>(std::min(part <= Unit ? part : 2 * Unit - part, Unit - 1));
}

} // namespace

bool PolygonCoverage::make(const QPointF* corners, int count, const Rasteriser::Mapping& mapping)
{
    if (count < FewestCorners || count > MostCorners || mayBeRect(corners, count))
        return false;
    m_corners.clear();
    constexpr int Far = 1 << 30;
    Corner least{Far, Far};
    Corner most{-Far, -Far};
    for (int i = 0; i < count; ++i) {
        const double x = mapping.x(corners[i].x());
        const double y = mapping.y(corners[i].y());
        if (!isNear(x) || !isNear(y))
            return false;
        const Corner corner{onGrid(x), onGrid(y)};
        least = {std::min(least.x, corner.x), std::min(least.y, corner.y)};
        most = {std::max(most.x, corner.x), std::max(most.y, corner.y)};
        m_corners.push_back(corner);
    }
    m_left = least.x >> UnitBits;
    m_top = least.y >> UnitBits;
    m_width = CoverageMask::paddedWidth((most.x >> UnitBits) - m_left + 1);
    m_height = (most.y >> UnitBits) - m_top + 1;
    if (m_width > LargestExtent || m_height > LargestExtent)
        return false;
    const std::size_t size = static_cast<std::size_t>(m_width) * m_height;
    if (m_cells.size() < size)
        m_cells.resize(size);
    for (Corner& corner : m_corners)
        corner = {corner.x - m_left * Unit, corner.y - m_top * Unit};
    for (int i = 0; i + 1 < count; ++i)
        addEdge(m_corners[i], m_corners[i + 1]);
    addEdge(m_corners.back(), m_corners.front());
    sumUp();
    return true;
}

// Splits an edge at the borders of rows.
void PolygonCoverage::addEdge(Corner from, Corner to)
{
    const int lastRow = to.y >> UnitBits;
    int row = from.y >> UnitBits;
    Corner start{from.x, from.y - row * Unit};
    const bool isDown = to.y > from.y;
    while (row != lastRow) {
        const int border = (isDown ? row + 1 : row) * Unit;
        const int x = from.x + roundedDown((to.x - from.x) * std::abs(border - from.y), std::abs(to.y - from.y));
        addWithinRow(row, start, {x, isDown ? Unit : 0});
        start = {x, isDown ? 0 : Unit};
        row += isDown ? 1 : -1;
    }
    addWithinRow(row, start, {to.x, to.y - row * Unit});
}

// Splits a piece of an edge at the borders of columns. The y of its ends counts from the row's upper border.
void PolygonCoverage::addWithinRow(int row, Corner from, Corner to)
{
    if (from.y == to.y)
        return;
    const int lastColumn = to.x >> UnitBits;
    int column = from.x >> UnitBits;
    Corner start = from;
    const bool isRight = to.x > from.x;
    while (column != lastColumn) {
        const int border = (isRight ? column + 1 : column) * Unit;
        const int y = from.y + roundedDown((to.y - from.y) * std::abs(border - from.x), std::abs(to.x - from.x));
        add(row, column, start.x, border, y - start.y);
        start = {border, y};
        column += isRight ? 1 : -1;
    }
    add(row, column, start.x, to.x, to.y - start.y);
}

inline void PolygonCoverage::add(int row, int column, int fromX, int toX, int height)
{
    Cell& cell = m_cells[static_cast<std::size_t>(row) * m_width + column];
    cell.height += height;
    cell.area += (fromX + toX - 2 * column * Unit) * height;
}

void PolygonCoverage::sumUp()
{
    const std::size_t size = static_cast<std::size_t>(m_width) * m_height;
    if (m_coverage.size() < size)
        m_coverage.resize(size);
    Cell* cell = m_cells.data();
    std::uint8_t* coverage = m_coverage.data();
    for (int row = 0; row < m_height; ++row) {
        int height = 0;
        for (int column = 0; column < m_width; ++column, ++cell) {
            height += cell->height;
            *coverage++ = coverageOf(height * 2 * Unit - cell->area);
            *cell = {0, 0};
        }
    }
}

CoverageMask PolygonCoverage::mask() const
{
    return {m_left, m_top, m_width, m_height, m_coverage.data()};
}

} // namespace mirn::zelchipview
