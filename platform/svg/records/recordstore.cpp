// SPDX-License-Identifier: MIT
#include "platform/svg/records/recordstore.h"

namespace mirn::zelsvg {

void RecordStore::add(PackedRecord record, const PackedLook& look)
{
    record.look = m_looks.add(look);
    m_records.add(record);
}

std::uint64_t RecordStore::addPoints(const zel_Point* points, std::size_t count)
{
    const std::size_t first = m_points.size();
    for (std::size_t i = 0; i < count; ++i)
        m_points.add(points[i]);
    return first;
}

std::uint32_t RecordStore::addSpan(const PackedSpan& span)
{
    m_spans.add(span);
    return static_cast<std::uint32_t>(m_spans.size() - 1);
}

void RecordStore::setView(const View& view, std::shared_ptr<const void> bytes)
{
    m_records.setView(view.records, view.recordCount);
    m_looks.setView(view.looks, view.lookCount);
    m_points.setView(view.points, view.pointCount);
    m_spans.setView(view.spans, view.spanCount);
    m_texts.setView(view.texts, view.textSize);
    m_bytes = std::move(bytes);
}

} // namespace mirn::zelsvg
