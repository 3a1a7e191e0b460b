// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <vector>

namespace mirn::zelsvg {

// An array of plain entries. It either owns them and grows in chunks, so that nothing is ever copied, or is a view of
// entries stored elsewhere.
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

    // Makes this a view of `size` entries at `entries`. They must outlive it and are never changed; nothing may be
    // added.
    void setView(const Entry* entries, std::size_t size)
    {
        m_chunks.clear();
        m_view = entries;
        m_size = size;
    }

    // Calls take(entries, count) for each contiguous run of the `count` entries that begin at `first`.
    template <typename Take> void forEachRun(std::size_t first, std::size_t count, Take take) const
    {
        while (count > 0) {
            const std::size_t run = m_view ? count : std::min(count, ChunkSize - first % ChunkSize);
            take(&(*this)[first], run);
            first += run;
            count -= run;
        }
    }

    // Calls take(entry) for each entry.
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

} // namespace mirn::zelsvg
