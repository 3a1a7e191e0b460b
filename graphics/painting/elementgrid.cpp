// SPDX-License-Identifier: MIT
#include "graphics/painting/elementgrid.h"

#include <QtAlgorithms>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace mirn::zelchipview {

namespace {

constexpr int PlacesPerCell = 4;
constexpr int MostCellsPerSide = 2048;
constexpr int LargeInCells = 64; // a rectangle that covers this many cells is kept in m_large

int lowestBit(std::uint64_t bits)
{
    return static_cast<int>(qCountTrailingZeroBits(static_cast<quint64>(bits)));
}

double finite(double value)
{
    return std::isfinite(value) ? value : 0.0;
}

} // namespace

void ElementGrid::build(int count, const Bounds& boundsOf)
{
    m_count = count;
    double left = std::numeric_limits<double>::max();
    double top = left;
    double right = -left;
    double bottom = -left;
    for (int place = 0; place < count; ++place) {
        const QRectF bounds = boundsOf(place);
        left = std::min(left, finite(bounds.left()));
        top = std::min(top, finite(bounds.top()));
        right = std::max(right, finite(bounds.right()));
        bottom = std::max(bottom, finite(bounds.bottom()));
    }
    m_area = count > 0 ? QRectF(QPointF(left, top), QPointF(right, bottom)) : QRectF();
    const int side = std::clamp(static_cast<int>(std::sqrt(count / PlacesPerCell)), 1, MostCellsPerSide);
    m_columns = m_area.width() > 0 ? side : 1;
    m_rows = m_area.height() > 0 ? side : 1;
    m_large.clear();
    m_starts.assign(std::size_t(m_columns) * m_rows + 1, 0);

    // The places are sorted by counting: first the number of places in each cell, then the places.
    for (int place = 0; place < count; ++place) {
        const QRectF bounds = boundsOf(place);
        const Cells cells = cellsOf(bounds);
        if (isLarge(bounds, cells))
            m_large.push_back(place);
        else
            visit(cells, [this](std::size_t cell) { ++m_starts[cell + 1]; });
    }
    for (std::size_t cell = 1; cell < m_starts.size(); ++cell)
        m_starts[cell] += m_starts[cell - 1];
    m_places.resize(m_starts.back());
    std::vector<std::uint32_t> next(m_starts.begin(), m_starts.end() - 1);
    for (int place = 0; place < count; ++place) {
        const QRectF bounds = boundsOf(place);
        const Cells cells = cellsOf(bounds);
        if (!isLarge(bounds, cells))
            visit(cells, [&](std::size_t cell) { m_places[next[cell]++] = place; });
    }
}

// Rectangles with bounds that are not finite count as large, so that they are never reported as certainly inside.
bool ElementGrid::isLarge(const QRectF& bounds, const Cells& cells)
{
    return cells.count() >= LargeInCells
        || !std::isfinite(bounds.left() + bounds.right() + bounds.top() + bounds.bottom());
}

ElementGrid::Cells ElementGrid::cellsOf(const QRectF& area) const
{
    const auto cell = [](double value, double start, double length, int cells) {
        if (!(length > 0))
            return 0;
        const double position = (value - start) / length * cells;
        return position > 0 ? static_cast<int>(std::min(position, double(cells - 1))) : 0;
    };
    return {cell(area.left(), m_area.left(), m_area.width(), m_columns),
        cell(area.top(), m_area.top(), m_area.height(), m_rows),
        cell(area.right(), m_area.left(), m_area.width(), m_columns),
        cell(area.bottom(), m_area.top(), m_area.height(), m_rows)};
}

template <typename Visitor> void ElementGrid::visit(const Cells& cells, Visitor visitor) const
{
    for (int row = cells.top; row <= cells.bottom; ++row) {
        for (int column = cells.left; column <= cells.right; ++column)
            visitor(std::size_t(row) * m_columns + column);
    }
}

// Returns the cells that lie entirely inside an area, where the cells at the edges of the grid end with it. Returns an
// empty range if there are none.
ElementGrid::Cells ElementGrid::cellsWithin(const QRectF& area) const
{
    Cells cells = cellsOf(area);
    cells.left += area.left() > m_area.left() ? 1 : 0;
    cells.top += area.top() > m_area.top() ? 1 : 0;
    cells.right -= area.right() < m_area.right() ? 1 : 0;
    cells.bottom -= area.bottom() < m_area.bottom() ? 1 : 0;
    const bool isEmpty = cells.left > cells.right || cells.top > cells.bottom;
    return isEmpty ? Cells{0, 0, -1, -1} : cells;
}

// Marks what touches some cells.
void ElementGrid::mark(const Cells& cells, Marks& marks) const
{
    if (cells.left > cells.right)
        return;
    for (int row = cells.top; row <= cells.bottom; ++row) {
        const std::size_t first = std::size_t(row) * m_columns;
        const std::uint32_t start = m_starts[first + cells.left]; // the cells of a row follow each other
        marks.set(m_places.data() + start, m_starts[first + cells.right + 1] - start);
    }
}

// Marks what touches the cells of a range outside of a range within it, which may be empty. A rectangle that does so
// may itself be outside.
void ElementGrid::markAround(const Cells& within, const Cells& cells, Marks& marks) const
{
    marks.set(m_large.data(), m_large.size());
    if (within.count() == 0) {
        mark(cells, marks);
        return;
    }
    mark({cells.left, cells.top, cells.right, within.top - 1}, marks);
    mark({cells.left, within.bottom + 1, cells.right, cells.bottom}, marks);
    mark({cells.left, within.top, within.left - 1, within.bottom}, marks);
    mark({within.right + 1, within.top, cells.right, within.bottom}, marks);
}

// For a range of most cells, whose places need not be collected.
void ElementGrid::findMost(const Cells& within, std::vector<Found>& found, Marks& atEdge) const
{
    markAround(within, {0, 0, m_columns - 1, m_rows - 1}, atEdge);
    found.resize(m_count);
    int place = 0;
    for (std::size_t i = 0; place < m_count; ++i) {
        std::uint64_t edge = atEdge.word(i);
        for (const int end = std::min(m_count, place + Marks::Bits); place < end; ++place, edge >>= 1)
            found[place] = {place, (edge & 1) == 0};
    }
    atEdge.clear();
}

void ElementGrid::find(const QRectF& area, const QRectF& inner, std::vector<Found>& found, Search& search) const
{
    search.atEdge.makeRoomFor(m_count);
    const Cells within = cellsWithin(inner);
    if (within.count() >= std::int64_t(m_columns) * m_rows / 2) {
        findMost(within, found, search.atEdge);
        return;
    }
    search.touched.makeRoomFor(m_count);
    const Cells cells = cellsOf(area);
    markAround(within, cells, search.atEdge);
    mark(within, search.touched);
    const std::size_t end = std::max(search.touched.end(), search.atEdge.end());
    for (std::size_t i = std::min(search.touched.first(), search.atEdge.first()); i < end; ++i) {
        const std::uint64_t edge = search.atEdge.word(i);
        std::uint64_t marks = search.touched.word(i) | edge;
        const int first = static_cast<int>(i * Marks::Bits);
        const std::size_t count = found.size();
        found.resize(count + qPopulationCount(static_cast<quint64>(marks)));
        for (Found* next = found.data() + count; marks != 0; marks &= marks - 1) {
            const int bit = lowestBit(marks);
            *next++ = {first + bit, ((edge >> bit) & 1) == 0};
        }
    }
    search.touched.clear();
    search.atEdge.clear();
}

double ElementGrid::estimate(const QRectF& area) const
{
    return static_cast<double>(m_count) * cellsOf(area).count() / (double(m_columns) * m_rows);
}

void ElementGrid::find(const QRectF& area, std::vector<int>& places, Search& search) const
{
    if (m_count == 0)
        return;
    if (area.contains(m_area)) {
        places.resize(m_count);
        std::iota(places.begin(), places.end(), 0);
        return;
    }
    Marks& marks = search.touched;
    marks.makeRoomFor(m_count);
    markAround({0, 0, -1, -1}, cellsOf(area), marks);
    for (std::size_t i = marks.first(); i < marks.end(); ++i) {
        for (std::uint64_t word = marks.word(i); word != 0; word &= word - 1)
            places.push_back(static_cast<int>(i * Marks::Bits) + lowestBit(word));
    }
    marks.clear();
}

} // namespace mirn::zelchipview
