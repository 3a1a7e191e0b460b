// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
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

    // What a search notes about places, one bit for each, all clear between two searches. Searches with marks of their
    // own may be made at the same time.
    class Marks
    {
    public:
        static constexpr int Bits = 64; // in a word

        void makeRoomFor(int count) { m_words.resize(static_cast<std::size_t>(count) / Bits + 1); }

        void set(const std::uint32_t* places, std::size_t count)
        {
            std::uint64_t* const words = m_words.data();
            std::uint32_t lowest = std::numeric_limits<std::uint32_t>::max();
            std::uint32_t highest = 0;
            for (const std::uint32_t* place = places; place != places + count; ++place) {
                words[*place / Bits] |= std::uint64_t(1) << *place % Bits;
                lowest = std::min(lowest, *place);
                highest = std::max(highest, *place);
            }
            if (count == 0)
                return;
            m_first = std::min<std::size_t>(m_first, lowest / Bits);
            m_end = std::max<std::size_t>(m_end, highest / Bits + 1);
        }

        [[nodiscard]] std::uint64_t word(std::size_t index) const { return m_words[index]; }
        [[nodiscard]] std::size_t first() const { return m_first; } // of the words that may have a mark
        [[nodiscard]] std::size_t end() const { return m_end; }

        void clear()
        {
            if (m_first < m_end)
                std::fill(m_words.begin() + m_first, m_words.begin() + m_end, std::uint64_t(0));
            m_first = std::numeric_limits<std::size_t>::max();
            m_end = 0;
        }

    private:
        std::vector<std::uint64_t> m_words;
        std::size_t m_first = std::numeric_limits<std::size_t>::max();
        std::size_t m_end = 0;
    };

    struct Search
    {
        Marks touched;
        Marks atEdge;
    };

    // Builds the grid for the places 0 to `count` - 1.
    void build(int count, const Bounds& boundsOf);

    // The bounding rectangle of all rectangles.
    [[nodiscard]] const QRectF& area() const { return m_area; }

    // Appends the places in ascending order, each once, to an empty list. Some rectangles may lie a little outside of
    // the area.
    void find(const QRectF& area, std::vector<int>& places, Search& search) const;

    // Does the same, and reports which rectangles are certainly inside of `inner`, a part of the area, so that they
    // need no further test. If `inner` holds half of the cells or more, all places are reported.
    void find(const QRectF& area, const QRectF& inner, std::vector<Found>& found, Search& search) const;

    // About how many rectangles touch an area, if they lie evenly.
    [[nodiscard]] double estimate(const QRectF& area) const;

private:
    struct Cells
    {
        int left;
        int top;
        int right;
        int bottom;

        [[nodiscard]] std::int64_t count() const { return std::int64_t(right - left + 1) * (bottom - top + 1); }
    };

    [[nodiscard]] static bool isLarge(const QRectF& bounds, const Cells& cells);
    [[nodiscard]] Cells cellsOf(const QRectF& area) const;
    [[nodiscard]] Cells cellsWithin(const QRectF& area) const;
    template <typename Visitor> void visit(const Cells& cells, Visitor visitor) const;
    void mark(const Cells& cells, Marks& marks) const;
    void markAround(const Cells& within, const Cells& cells, Marks& marks) const;
    void findMost(const Cells& within, std::vector<Found>& found, Marks& atEdge) const;

    int m_count = 0;
    int m_columns = 0;
    int m_rows = 0;
    QRectF m_area;
    std::vector<std::uint32_t> m_starts; // the start of each cell's places in m_places, and the end of the last
    std::vector<std::uint32_t> m_places;
    std::vector<std::uint32_t> m_large; // rectangles that would fill many cells
};

} // namespace mirn::zelchipview
