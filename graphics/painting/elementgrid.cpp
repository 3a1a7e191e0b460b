// SPDX-License-Identifier: MIT
#include "graphics/painting/elementgrid.h"

#include <QtAlgorithms>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

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
    m_marks.assign(count / MarkBits + 1, 0);

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

void ElementGrid::find(const QRectF& area, const QRectF& inner, std::vector<Found>& found)
{
    const Cells within = cellsWithin(inner);
    if (within.count() < std::int64_t(m_columns) * m_rows / 2) {
        std::vector<int> places;
        find(area, places);
        for (int place : places)
            found.push_back({place, false});
        return;
    }
    // A rectangle that touches a cell outside may itself be outside.
    const auto mark
        = [this](std::uint32_t place) { m_marks[place / MarkBits] |= std::uint64_t(1) << place % MarkBits; };
    const auto markIn = [&](const Cells& cells) {
        visit(cells, [&](std::size_t cell) {
            std::for_each(m_places.begin() + m_starts[cell], m_places.begin() + m_starts[cell + 1], mark);
        });
    };
    std::for_each(m_large.begin(), m_large.end(), mark);
    markIn({0, 0, m_columns - 1, within.top - 1});
    markIn({0, within.bottom + 1, m_columns - 1, m_rows - 1});
    markIn({0, within.top, within.left - 1, within.bottom});
    markIn({within.right + 1, within.top, m_columns - 1, within.bottom});
    found.reserve(m_count);
    for (int place = 0; place < m_count; ++place)
        found.push_back({place, !isMarked(place)});
    std::fill(m_marks.begin(), m_marks.end(), 0);
}

void ElementGrid::find(const QRectF& area, std::vector<int>& places)
{
    if (m_count == 0)
        return;
    if (area.contains(m_area)) {
        places.resize(m_count);
        std::iota(places.begin(), places.end(), 0);
        return;
    }
    std::size_t first = m_marks.size();
    std::size_t last = 0;
    const auto mark = [&](std::uint32_t place) {
        const std::size_t word = place / MarkBits;
        m_marks[word] |= std::uint64_t(1) << place % MarkBits;
        first = std::min(first, word);
        last = std::max(last, word);
    };
    for (std::uint32_t place : m_large)
        mark(place);
    visit(cellsOf(area), [&](std::size_t cell) {
        for (std::uint32_t i = m_starts[cell]; i < m_starts[cell + 1]; ++i)
            mark(m_places[i]);
    });
    collect(first, last, places);
}

// Appends the marked places of some words and clears the marks.
void ElementGrid::collect(std::size_t first, std::size_t last, std::vector<int>& places)
{
    for (std::size_t word = first; word <= last; ++word) {
        for (std::uint64_t marks = std::exchange(m_marks[word], 0); marks != 0; marks &= marks - 1)
            places.push_back(static_cast<int>(word * MarkBits) + lowestBit(marks));
    }
}

} // namespace mirn::zelchipview
