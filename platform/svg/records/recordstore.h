// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/base/chunkedarray.h"
#include "platform/svg/base/textpool.h"
#include "platform/svg/records/lookset.h"
#include "platform/svg/records/packedrecord.h"

#include <memory>

namespace mirn::zelsvg {

// The records of a drawing in packed form and paint order, with the texts and corners that they refer to. It either
// owns them, added one by one, or is a view of a working file.
class RecordStore
{
public:
    void add(PackedRecord record, const PackedLook& look);

    // Add what a record refers to, before the record itself. They return the index of the first entry.
    std::uint64_t addPoints(const zel_Point* points, std::size_t count);
    std::uint32_t addSpan(const PackedSpan& span);
    [[nodiscard]] TextPool& texts() { return m_texts; }

    void setTooltip(std::size_t index, TextPool::Offset tooltip) { m_records[index].tooltip = tooltip; }

    [[nodiscard]] std::size_t size() const { return m_records.size(); }
    [[nodiscard]] const ChunkedArray<PackedRecord>& records() const { return m_records; }
    [[nodiscard]] const ChunkedArray<PackedLook>& looks() const { return m_looks.looks(); }
    [[nodiscard]] const ChunkedArray<zel_Point>& points() const { return m_points; }
    [[nodiscard]] const ChunkedArray<PackedSpan>& spans() const { return m_spans; }
    [[nodiscard]] const TextPool& texts() const { return m_texts; }

    [[nodiscard]] const PackedLook& lookOf(const PackedRecord& record) const { return looks()[record.look]; }

    struct View
    {
        const PackedRecord* records;
        std::size_t recordCount;
        const PackedLook* looks;
        std::size_t lookCount;
        const zel_Point* points;
        std::size_t pointCount;
        const PackedSpan* spans;
        std::size_t spanCount;
        const char* texts;
        std::size_t textSize;
    };

    // Makes this a view of the data in `bytes`, which it keeps alive. Nothing may be added.
    void setView(const View& view, std::shared_ptr<const void> bytes);

private:
    ChunkedArray<PackedRecord> m_records;
    LookSet m_looks;
    ChunkedArray<zel_Point> m_points;
    ChunkedArray<PackedSpan> m_spans;
    TextPool m_texts; // names, tooltips, texts and families, ISO 8859-1
    std::shared_ptr<const void> m_bytes; // keeps a view's data alive
};

} // namespace mirn::zelsvg
