// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <cstdint>
#include <functional>
#include <vector>

namespace mirn::zelchipview {

// Finds the rectangles of a list that may touch an area, by a grid of cells over all of them. Holds places in that
// list.
class ElementGrid final
{
public:
    using Bounds = std::function<QRectF(int place)>;

    struct Found
    {
        int place;
        bool isInside; // certainly; else it may lie inside, across the border or a little outside
    };

    // For the places 0 to `count` - 1.
    void build(int count, const Bounds& boundsOf);

    // What the rectangles cover together.
    [[nodiscard]] const QRectF& area() const { return m_area; }

    // Fills in the places in ascending order, each once; some may lie a little outside.
    void find(const QRectF& area, std::vector<int>& places);

    // The same for large areas, where what is certainly inside needs no further look: inside of `inner`, a part of the
    // area. For the largest areas all places are found.
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
    std::vector<std::uint32_t> m_starts; // of each cell's places in m_places, and the end of the last
    std::vector<std::uint32_t> m_places;
    std::vector<std::uint32_t> m_large; // rectangles that would fill many cells
    std::vector<std::uint64_t> m_marks; // a bit for each place, all clear between two searches
};

} // namespace mirn::zelchipview
