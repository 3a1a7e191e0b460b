// SPDX-License-Identifier: MIT
#include "platform/svg/records/recordobjects.h"

namespace mirn::zelsvg {

namespace {

void unpackCommon(
    const RecordStore& store, const PackedRecord& record, const PackedLook& look, zel_SingleGraphItem& item)
{
    item.id = record.id;
    item.name = store.texts().text(record.name);
    item.tooltip = store.texts().text(record.tooltip);
    item.layer = look.layer;
    item.flag = look.flag != 0;
}

void unpack(const RecordStore& store, const PackedRecord& record, const PackedLook& look, zel_Line& line)
{
    unpackCommon(store, record, look, line);
    line.x1 = record.values[0];
    line.y1 = record.values[1];
    line.x2 = record.values[2];
    line.y2 = record.values[3];
    line.strokeColor = look.strokeColor;
    line.strokeWidth = look.strokeWidth;
}

void unpack(const RecordStore& store, const PackedRecord& record, const PackedLook& look, zel_Rect& rect)
{
    unpackCommon(store, record, look, rect);
    rect.x = record.values[0];
    rect.y = record.values[1];
    rect.width = record.values[2];
    rect.height = record.values[3];
    rect.fillColor = look.fillColor;
    rect.strokeColor = look.strokeColor;
    rect.strokeWidth = look.strokeWidth;
}

void unpack(const RecordStore& store, const PackedRecord& record, const PackedLook& look, zel_Polygon& polygon)
{
    unpackCommon(store, record, look, polygon);
    polygon.points.clear();
    store.points().forEachRun(static_cast<std::size_t>(record.polygon.first),
        static_cast<std::size_t>(record.polygon.count), [&polygon](const zel_Point* points, std::size_t count) {
            polygon.points.insert(polygon.points.end(), points, points + count);
        });
    polygon.fillColor = look.fillColor;
    polygon.strokeColor = look.strokeColor;
    polygon.strokeWidth = look.strokeWidth;
}

void unpack(const RecordStore& store, const PackedRecord& record, const PackedLook& look, zel_Text& text)
{
    unpackCommon(store, record, look, text);
    text.text.assign(store.texts().text(record.run.text), record.run.length);
    text.x = record.run.x;
    text.y = record.run.y;
    text.fontSize = look.fontSize;
    text.fontFamily = store.texts().text(look.family);
    text.fillColor = look.fillColor;
    text.rotation = look.rotation;
    text.spans.resize(record.run.spans);
    for (std::size_t i = 0; i < text.spans.size(); ++i) {
        const PackedSpan& span = store.spans()[record.run.firstSpan + i];
        text.spans[i].x = span.x;
        text.spans[i].y = span.y;
        text.spans[i].text.assign(store.texts().text(span.text), span.length);
    }
}

// Calls take() with the one of the four objects or lists that fits the look's kind.
template <typename Lines, typename Rects, typename Polygons, typename Texts, typename Take>
decltype(auto) byKind(const PackedLook& look, Lines& lines, Rects& rects, Polygons& polygons, Texts& texts, Take take)
{
    switch (look.kind) {
    case ZEL_GRAPHIC_LINE:
        return take(lines);
    case ZEL_GRAPHIC_RECT:
        return take(rects);
    case ZEL_GRAPHIC_POLYGON:
        return take(polygons);
    default:
        return take(texts);
    }
}

} // namespace

RecordUnpacker::RecordUnpacker(const RecordStore& store)
    : m_store(store)
{ }

const zel_SingleGraphItem& RecordUnpacker::unpacked(const PackedRecord& record)
{
    const PackedLook& look = m_store.lookOf(record);
    return byKind(look, m_line, m_rect, m_polygon, m_text, [&](auto& item) -> const zel_SingleGraphItem& {
        unpack(m_store, record, look, item);
        return item;
    });
}

RecordObjects::RecordObjects(const RecordStore& store)
{
    // The lists are reserved beforehand, because objects that are pointed at must not move.
    std::size_t counts[4] = {};
    store.records().forEach([&](const PackedRecord& record) { ++counts[store.lookOf(record).kind]; });
    m_lines.reserve(counts[ZEL_GRAPHIC_LINE]);
    m_rects.reserve(counts[ZEL_GRAPHIC_RECT]);
    m_polygons.reserve(counts[ZEL_GRAPHIC_POLYGON]);
    m_texts.reserve(counts[ZEL_GRAPHIC_TEXT]);
    m_items.reserve(store.size());
    store.records().forEach([&](const PackedRecord& record) {
        const PackedLook& look = store.lookOf(record);
        byKind(look, m_lines, m_rects, m_polygons, m_texts, [&](auto& list) {
            list.emplace_back();
            unpack(store, record, look, list.back());
            m_items.push_back(&list.back());
        });
    });
}

} // namespace mirn::zelsvg
