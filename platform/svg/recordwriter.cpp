// SPDX-License-Identifier: MIT
#include "platform/svg/recordwriter.h"

#include "platform/svg/diagnostics.h"

#include <cmath>

namespace zelsvg {

namespace {

// A layer without a range of its own: no scale is outside of this.
constexpr RangeScale Always{-LargestNumber, LargestNumber};

[[nodiscard]] zel_Point farCorner(const zel_SingleGraphItem* item)
{
    zel_Point corner;
    const auto include = [&corner](double x, double y) {
        corner.x = std::max(corner.x, x);
        corner.y = std::max(corner.y, y);
    };
    if (item->kind == ZEL_GRAPHIC_LINE) {
        const auto* line = static_cast<const zel_Line*>(item);
        include(line->x1, line->y1);
        include(line->x2, line->y2);
    } else if (item->kind == ZEL_GRAPHIC_RECT) {
        const auto* rect = static_cast<const zel_Rect*>(item);
        include(rect->x + rect->width, rect->y + rect->height);
    } else if (item->kind == ZEL_GRAPHIC_POLYGON) {
        for (const zel_Point& point : static_cast<const zel_Polygon*>(item)->points)
            include(point.x, point.y);
    } else if (item->kind == ZEL_GRAPHIC_TEXT) {
        include(static_cast<const zel_Text*>(item)->x, static_cast<const zel_Text*>(item)->y);
    }
    return corner;
}

} // namespace

RecordWriter::RecordWriter(Drawing& drawing, Diagnostics& diagnostics, const Limits& limits)
    : m_drawing(drawing)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
{ }

void RecordWriter::addLine(const Identity& identity, zel_Point from, zel_Point to, const Stroke& stroke)
{
    if (!isAllowed(from) || !isAllowed(to))
        return;
    zel_Line* line = m_drawing.records.addLine();
    setCommon(identity, line);
    line->x1 = from.x;
    line->y1 = from.y;
    line->x2 = to.x;
    line->y2 = to.y;
    line->strokeColor = stroke.color;
    line->strokeWidth = stroke.width;
}

void RecordWriter::addRect(
    const Identity& identity, zel_Point corner, double width, double height, unsigned int fill, const Stroke& stroke)
{
    if (!isAllowed(corner) || !isAllowed({corner.x + width, corner.y + height}))
        return;
    zel_Rect* rect = m_drawing.records.addRect();
    setCommon(identity, rect);
    rect->x = corner.x;
    rect->y = corner.y;
    rect->width = width;
    rect->height = height;
    rect->fillColor = fill;
    rect->strokeColor = stroke.color;
    rect->strokeWidth = stroke.width;
}

void RecordWriter::addPolygon(
    const Identity& identity, std::vector<zel_Point> points, unsigned int fill, const Stroke& stroke)
{
    m_points += points.size();
    if (m_points > m_limits.points)
        m_diagnostics.fail(
            "found more than " + std::to_string(m_limits.points) + " corners of polygons in the drawing");
    if (!isAllowed(points.front()))
        return;
    zel_Polygon* polygon = m_drawing.records.addPolygon();
    setCommon(identity, polygon);
    polygon->points = std::move(points);
    polygon->fillColor = fill;
    polygon->strokeColor = stroke.color;
    polygon->strokeWidth = stroke.width;
}

zel_Text* RecordWriter::addText(const Identity& identity, zel_Point position)
{
    if (!isAllowed(position))
        return nullptr;
    zel_Text* text = m_drawing.records.addText();
    setCommon(identity, text);
    text->x = position.x;
    text->y = position.y;
    return text;
}

void RecordWriter::replaceTooltip(std::size_t first, const char* replaced, const char* tooltip)
{
    const auto& items = m_drawing.records.items();
    for (std::size_t i = first; i < items.size(); ++i) {
        if (items[i]->tooltip == replaced)
            items[i]->tooltip = tooltip;
    }
}

void RecordWriter::completeLayers()
{
    auto& ranges = m_drawing.parameter.layerRanges;
    for (int layer = 0; layer < CommonLayers; ++layer) {
        if (m_commonLayers[static_cast<std::size_t>(layer)])
            ranges.emplace(layer, Always);
    }
    for (int layer : m_otherLayers)
        ranges.emplace(layer, Always);
}

void RecordWriter::takeSizeFromRecords()
{
    zel_Point corner;
    for (const zel_SingleGraphItem* item : m_drawing.records.items()) {
        const zel_Point one = farCorner(item);
        corner = {std::max(corner.x, one.x), std::max(corner.y, one.y)};
    }
    if (corner.x > 0.0)
        m_drawing.parameter.width = corner.x;
    if (corner.y > 0.0)
        m_drawing.parameter.height = corner.y;
}

bool RecordWriter::isAllowed(zel_Point point)
{
    if (!(std::fabs(point.x) <= LargestNumber && std::fabs(point.y) <= LargestNumber))
        m_diagnostics.fail("found an element that lies beyond 1e9, expected one within the drawing");
    else if (m_drawing.records.size() >= m_limits.records)
        m_diagnostics.fail(
            "found more than " + std::to_string(m_limits.records) + " shapes, expected a smaller drawing");
    return !m_diagnostics.hasFailed();
}

void RecordWriter::setCommon(const Identity& identity, zel_SingleGraphItem* record)
{
    record->id = identity.id;
    record->name = identity.name;
    record->tooltip = identity.tooltip;
    record->layer = identity.layer;
    record->flag = identity.flag;
    if (identity.layer >= 0 && identity.layer < CommonLayers)
        m_commonLayers.set(static_cast<std::size_t>(identity.layer));
    else
        m_otherLayers.insert(identity.layer);
}

} // namespace zelsvg
