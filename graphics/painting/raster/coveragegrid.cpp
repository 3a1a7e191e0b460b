// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/coveragegrid.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>

// These rules were found by observing what QPainter draws, and a test compares the two. Corners lie on a grid of 1/64
// of a pixel. The point where an edge passes from one row or column of pixels to the next is rounded down, seen from
// the start of the edge, to 1/256 of a pixel. Between these points the covered area is exact; the coverage of a pixel
// is that area truncated to 1/256.

namespace mirn::zelchipview {

namespace {

constexpr int PlacesPerPixel = 64;
constexpr int UnitBits = 8;

// `divisor` must be > 0.
int roundedDown(int dividend, int divisor)
{
    const int quotient = dividend / divisor;
    return quotient - (dividend % divisor < 0 ? 1 : 0);
}

// These convert an area to a coverage of 0 to 255. `area` is signed and counts 2 * Unit * Unit for a whole pixel.
std::uint8_t oddEvenCoverage(int area)
{
    constexpr int Whole = CoverageGrid::Unit;
    const int part = std::abs(area >> (UnitBits + 1)) & (2 * Whole - 1);
    return static_cast<std::uint8_t>(std::min(part <= Whole ? part : 2 * Whole - part, Whole - 1));
}

std::uint8_t windingCoverage(int area)
{
    return static_cast<std::uint8_t>(std::min(std::abs(area >> (UnitBits + 1)), CoverageGrid::Unit - 1));
}

} // namespace

// Qt 6 rounds halves away from 0, Qt 5 upwards.
int CoverageGrid::onGrid(double pixels)
{
    const double places = pixels * PlacesPerPixel;
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return static_cast<int>(places + std::copysign(0.5, places)) * (Unit / PlacesPerPixel);
#else
    return static_cast<int>(std::floor(places + 0.5)) * (Unit / PlacesPerPixel);
#endif
}

bool CoverageGrid::begin(Corner least, Corner most)
{
    m_left = least.x >> UnitBits;
    m_top = least.y >> UnitBits;
    m_width = CoverageMask::paddedWidth((most.x >> UnitBits) - m_left + 1);
    m_height = (most.y >> UnitBits) - m_top + 1;
    if (m_width > LargestExtent || m_height > LargestExtent)
        return false;
    const std::size_t size = static_cast<std::size_t>(m_width) * m_height;
    if (m_cells.size() < size)
        m_cells.resize(size);
    return true;
}

// Splits an edge at the borders of rows.
void CoverageGrid::addEdge(Corner from, Corner to)
{
    from = {from.x - m_left * Unit, from.y - m_top * Unit};
    to = {to.x - m_left * Unit, to.y - m_top * Unit};
    const int lastRow = to.y >> UnitBits;
    int row = from.y >> UnitBits;
    if (from.x == to.x) {
        addUpright(from, to.y);
        return;
    }
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

void CoverageGrid::addUpright(Corner from, int toY)
{
    const int column = from.x >> UnitBits;
    const int sign = toY > from.y ? 1 : -1;
    const int top = std::min(from.y, toY);
    const int bottom = std::max(from.y, toY);
    for (int y = top; y < bottom;) {
        const int row = y >> UnitBits;
        const int next = std::min(bottom, (row + 1) * Unit);
        add(row, column, from.x, from.x, sign * (next - y));
        y = next;
    }
}

// Splits a piece of an edge at the borders of columns. The y of its ends counts from the row's upper border.
void CoverageGrid::addWithinRow(int row, Corner from, Corner to)
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

// Whether an edge passes one of the next pixels. Most of a large shape's pixels have none.
inline bool CoverageGrid::hasEdges(const Cell* cells)
{
    unsigned any = 0;
    for (int i = 0; i < CoverageMask::ColumnsAtOnce; ++i)
        any |= static_cast<unsigned>(cells[i].height) | static_cast<unsigned>(cells[i].area);
    return any != 0;
}

inline void CoverageGrid::add(int row, int column, int fromX, int toX, int height)
{
    Cell& cell = m_cells[static_cast<std::size_t>(row) * m_width + column];
    cell.height += height;
    cell.area += (fromX + toX - 2 * column * Unit) * height;
}

template <typename CoverageOf> void CoverageGrid::sumUp(CoverageOf coverageOf)
{
    const std::size_t size = static_cast<std::size_t>(m_width) * m_height;
    if (m_coverage.size() < size)
        m_coverage.resize(size);
    Cell* cell = m_cells.data();
    std::uint8_t* coverage = m_coverage.data();
    for (int row = 0; row < m_height; ++row) {
        int height = 0;
        for (int column = 0; column < m_width; column += CoverageMask::ColumnsAtOnce) {
            const bool isPassed = hasEdges(cell);
            for (int i = 0; isPassed && i < CoverageMask::ColumnsAtOnce; ++i) {
                height += cell[i].height;
                coverage[i] = coverageOf(height * 2 * Unit - cell[i].area);
                cell[i] = {0, 0};
            }
            if (!isPassed)
                std::fill_n(coverage, CoverageMask::ColumnsAtOnce, coverageOf(height * 2 * Unit));
            cell += CoverageMask::ColumnsAtOnce;
            coverage += CoverageMask::ColumnsAtOnce;
        }
    }
}

CoverageMask CoverageGrid::finish(Rule rule)
{
    if (rule == Rule::OddEven)
        sumUp(oddEvenCoverage);
    else
        sumUp(windingCoverage);
    return {m_left, m_top, m_width, m_height, m_coverage.data()};
}

} // namespace mirn::zelchipview
