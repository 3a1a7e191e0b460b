// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace zelsvg {

// A row of plain entries that grows in pieces, so that nothing is copied when it does, or that shows entries which lie
// elsewhere.
template <typename Entry> class ChunkedArray
{
public:
    [[nodiscard]] std::size_t size() const { return m_size; }

    void add(const Entry& entry)
    {
        if (m_size % ChunkSize == 0)
            m_chunks.emplace_back(new Entry[ChunkSize]);
        m_chunks.back()[m_size++ % ChunkSize] = entry;
    }

    [[nodiscard]] const Entry& operator[](std::size_t index) const
    {
        return m_view ? m_view[index] : m_chunks[index / ChunkSize][index % ChunkSize];
    }
    [[nodiscard]] Entry& operator[](std::size_t index) { return m_chunks[index / ChunkSize][index % ChunkSize]; }

    // Shows `size` entries at `entries`, which outlive this, and never changes them.
    void setView(const Entry* entries, std::size_t size)
    {
        m_chunks.clear();
        m_view = entries;
        m_size = size;
    }

    // Calls take(entries, count) for entries that lie side by side, until all `count` from `first` on have come.
    template <typename Take> void forEachRun(std::size_t first, std::size_t count, Take take) const
    {
        while (count > 0) {
            const std::size_t run = m_view ? count : std::min(count, ChunkSize - first % ChunkSize);
            take(&(*this)[first], run);
            first += run;
            count -= run;
        }
    }

    // Calls take(entry) for all of them.
    template <typename Take> void forEach(Take take) const
    {
        forEachRun(0, m_size, [&take](const Entry* entries, std::size_t count) {
            for (const Entry* entry = entries; entry != entries + count; ++entry)
                take(*entry);
        });
    }

private:
    static constexpr std::size_t ChunkSize = 1024;

    std::vector<std::unique_ptr<Entry[]>> m_chunks;
    const Entry* m_view = nullptr;
    std::size_t m_size = 0;
};

} // namespace zelsvg
