// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/textpool.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace zelsvg {

// Records of one kind side by side at fixed addresses.
template <typename Record> class RecordPool
{
public:
    RecordPool() = default;
    RecordPool(RecordPool&&) noexcept = default;
    RecordPool& operator=(RecordPool&& other) noexcept
    {
        m_blocks.swap(other.m_blocks);
        return *this;
    }
    ~RecordPool()
    {
        for (Block& block : m_blocks)
            std::destroy_n(block.records, block.used);
        for (Block& block : m_blocks)
            ::operator delete(block.records);
    }

    Record* add()
    {
        if (m_blocks.empty() || m_blocks.back().used == m_blocks.back().capacity)
            reserve(m_blocks.empty() ? FirstBlock : std::min(m_blocks.back().capacity * 2, LargestBlock));
        Block& block = m_blocks.back();
        return new (block.records + block.used++) Record; // destroyed by the pool
    }

    // One block for the next `count` records.
    void reserve(std::size_t count)
    {
        m_blocks.reserve(m_blocks.size() + 1);
        m_blocks.push_back({static_cast<Record*>(::operator new(count * sizeof(Record))), 0, count});
    }

private:
    static constexpr std::size_t FirstBlock = 64;
    static constexpr std::size_t LargestBlock = 16384;

    struct Block
    {
        Record* records;
        std::size_t used;
        std::size_t capacity;
    };

    std::vector<Block> m_blocks;
};

// Owns the records of a drawing and the texts that they point at.
class RecordStore
{
public:
    // Each makes a record behind those there are.
    zel_Line* addLine() { return added(m_lines.add()); }
    zel_Rect* addRect() { return added(m_rects.add()); }
    zel_Polygon* addPolygon() { return added(m_polygons.add()); }
    zel_Text* addText() { return added(m_texts.add()); }

    // Room for so many more records of each kind.
    void reserve(std::size_t lines, std::size_t rects, std::size_t polygons, std::size_t texts);

    [[nodiscard]] const std::vector<zel_SingleGraphItem*>& items() const { return m_items; }
    [[nodiscard]] std::size_t size() const { return m_items.size(); }

    // Names and tooltips, ISO 8859-1.
    [[nodiscard]] TextPool& names() { return m_names; }
    [[nodiscard]] const TextPool& names() const { return m_names; }

private:
    template <typename Record> Record* added(Record* record)
    {
        m_items.push_back(record);
        return record;
    }

    RecordPool<zel_Line> m_lines;
    RecordPool<zel_Rect> m_rects;
    RecordPool<zel_Polygon> m_polygons;
    RecordPool<zel_Text> m_texts;
    std::vector<zel_SingleGraphItem*> m_items;
    TextPool m_names;
};

} // namespace zelsvg
