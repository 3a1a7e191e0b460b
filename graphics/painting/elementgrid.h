// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cstdint>
#include <functional>
#include <vector>

namespace mirn::zelchipview {

// A spatial index: a grid of cells that finds the rectangles of a list that may touch an area. It stores their places
// in the list, not the rectangles.
class ElementGrid final
{
public:
    using Bounds = std::function<QRectF(int place)>;

    struct Found
    {
        int place;
        bool isInside; // certainly inside; if false, it may lie inside, across the border or a little outside
    };

    // Builds the grid for the places 0 to `count` - 1.
    void build(int count, const Bounds& boundsOf);

    // The bounding rectangle of all rectangles.
    [[nodiscard]] const QRectF& area() const { return m_area; }

    // Appends the places in ascending order, each once, to an empty list. Some rectangles may lie a little outside of
    // the area.
    void find(const QRectF& area, std::vector<int>& places);

    // Does the same for a large area, and reports which rectangles are certainly inside of `inner`, a part of the area,
    // so that they need no further test. If `inner` holds half of the cells or more, all places are reported.
    void find(const QRectF& area, const QRectF& inner, std::vector<Found>& found);

private:
    static constexpr int MarkBits = 64;

    struct Cells
    {
        int left;
        int top;
        int right;
        int bottom;

        [[nodiscard]] std::int64_t count() const { return std::int64_t(right - left + 1) * (bottom - top + 1); }
    };

    [[nodiscard]] bool isMarked(int place) const { return (m_marks[place / MarkBits] >> (place % MarkBits)) & 1; }
    [[nodiscard]] static bool isLarge(const QRectF& bounds, const Cells& cells);
    [[nodiscard]] Cells cellsOf(const QRectF& area) const;
    [[nodiscard]] Cells cellsWithin(const QRectF& area) const;
    template <typename Visitor> void visit(const Cells& cells, Visitor visitor) const;
    void collect(std::size_t first, std::size_t last, std::vector<int>& places);

    int m_count = 0;
    int m_columns = 0;
    int m_rows = 0;
    QRectF m_area;
    std::vector<std::uint32_t> m_starts; // the start of each cell's places in m_places, and the end of the last
    std::vector<std::uint32_t> m_places;
    std::vector<std::uint32_t> m_large; // rectangles that would fill many cells
    std::vector<std::uint64_t> m_marks; // one bit for each place, all clear between two searches
};

} // namespace mirn::zelchipview
