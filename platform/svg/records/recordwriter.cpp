// SPDX-License-Identifier: MIT
#include "platform/svg/records/recordwriter.h"

#include "platform/svg/base/diagnostics.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace mirn::zelsvg {

namespace {

// The range of a layer that has none of its own; no scale is outside of it.
constexpr RangeScale Always{-LargestNumber, LargestNumber};

[[nodiscard]] zel_Point farCorner(const RecordStore& records, const PackedRecord& record)
{
    zel_Point corner;
    const auto include = [&corner](double x, double y) {
        corner.x = std::max(corner.x, x);
        corner.y = std::max(corner.y, y);
    };
    const double* values = record.values;
    switch (records.lookOf(record).kind) {
    case ZEL_GRAPHIC_LINE:
        include(values[0], values[1]);
        include(values[2], values[3]);
        break;
    case ZEL_GRAPHIC_RECT:
        include(values[0] + values[2], values[1] + values[3]);
        break;
    case ZEL_GRAPHIC_POLYGON:
        for (std::uint64_t i = 0; i < record.polygon.count; ++i) {
            const zel_Point& point = records.points()[static_cast<std::size_t>(record.polygon.first + i)];
            include(point.x, point.y);
        }
        break;
    default:
        include(record.run.x, record.run.y);
        break;
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
    if (!m_edges.empty() && isWithinEdges(from))
        isWithinEdges(to);
    PackedRecord record{};
    const double values[] = {from.x, from.y, to.x, to.y};
    std::copy(std::begin(values), std::end(values), record.values);
    PackedLook look{};
    look.strokeColor = stroke.color;
    look.strokeWidth = stroke.width;
    add(ZEL_GRAPHIC_LINE, identity, record, look);
}

void RecordWriter::addRect(
    const Identity& identity, zel_Point corner, double width, double height, unsigned int fill, const Stroke& stroke)
{
    if (!isAllowed(corner) || !isAllowed({corner.x + width, corner.y + height}))
        return;
    if (!m_edges.empty() && isWithinEdges(corner))
        isWithinEdges({corner.x + width, corner.y + height});
    PackedRecord record{};
    const double values[] = {corner.x, corner.y, width, height};
    std::copy(std::begin(values), std::end(values), record.values);
    PackedLook look{};
    look.fillColor = fill;
    look.strokeColor = stroke.color;
    look.strokeWidth = stroke.width;
    add(ZEL_GRAPHIC_RECT, identity, record, look);
}

void RecordWriter::addPolygon(
    const Identity& identity, const zel_Point* points, std::size_t count, unsigned int fill, const Stroke& stroke)
{
    m_points += count;
    if (m_points > m_limits.points)
        m_diagnostics.fail(
            "found more than " + std::to_string(m_limits.points) + " corners of polygons in the drawing");
    if (!isAllowed(*points))
        return;
    for (std::size_t i = 0; i < count && !m_edges.empty() && isWithinEdges(points[i]);)
        ++i;
    PackedRecord record{};
    record.polygon = {m_drawing.records.addPoints(points, count), count};
    PackedLook look{};
    look.fillColor = fill;
    look.strokeColor = stroke.color;
    look.strokeWidth = stroke.width;
    add(ZEL_GRAPHIC_POLYGON, identity, record, look);
}

void RecordWriter::addText(const Identity& identity, const TextRun& run)
{
    if (!isAllowed(run.place))
        return;
    if (!m_edges.empty())
        isWithinEdges(run.place);
    RecordStore& records = m_drawing.records;
    const TextPool::Offset text = texts().intern(run.text);
    const auto length = static_cast<std::uint32_t>(run.text.size());
    PackedRecord record{};
    record.run = {run.place.x, run.place.y, text, length, 0, 0};
    if (run.isSpan) {
        record.run.firstSpan = records.addSpan({run.place.x, run.place.y, text, length});
        record.run.spans = 1;
    }
    PackedLook look{};
    look.fontSize = run.fontSize;
    look.family = texts().intern(run.family);
    look.fillColor = run.color;
    look.rotation = run.rotation;
    add(ZEL_GRAPHIC_TEXT, identity, record, look);
}

void RecordWriter::enterEdges(const Matrix& matrix, ViewportSize size)
{
    Edges edges{{LargestNumber, LargestNumber}, {-LargestNumber, -LargestNumber}};
    for (const zel_Point& corner : {matrix.map(0, 0), matrix.map(size.width, 0), matrix.map(0, size.height),
             matrix.map(size.width, size.height)}) {
        edges.least = {std::min(edges.least.x, corner.x), std::min(edges.least.y, corner.y)};
        edges.greatest = {std::max(edges.greatest.x, corner.x), std::max(edges.greatest.y, corner.y)};
    }
    constexpr double Negligible = 1e-6; // fraction of the size
    const double marginX = (edges.greatest.x - edges.least.x) * Negligible;
    const double marginY = (edges.greatest.y - edges.least.y) * Negligible;
    edges.least = {edges.least.x - marginX, edges.least.y - marginY};
    edges.greatest = {edges.greatest.x + marginX, edges.greatest.y + marginY};
    if (!m_edges.empty()) {
        const Edges& around = m_edges.back();
        edges.least = {std::max(edges.least.x, around.least.x), std::max(edges.least.y, around.least.y)};
        edges.greatest = {std::min(edges.greatest.x, around.greatest.x), std::min(edges.greatest.y, around.greatest.y)};
    }
    m_edges.push_back(edges);
}

// Warns if the point is outside.
bool RecordWriter::isWithinEdges(zel_Point point) const
{
    const Edges& edges = m_edges.back();
    if (point.x >= edges.least.x && point.y >= edges.least.y && point.x <= edges.greatest.x
        && point.y <= edges.greatest.y)
        return true;
    m_diagnostics.warn(Unsupported::Overflow);
    return false;
}

void RecordWriter::replaceTooltip(std::size_t first, TextPool::Offset replaced, TextPool::Offset tooltip)
{
    RecordStore& records = m_drawing.records;
    for (std::size_t i = first; i < records.size(); ++i) {
        if (records.records()[i].tooltip == replaced)
            records.setTooltip(i, tooltip);
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
    m_drawing.records.records().forEach([&](const PackedRecord& record) {
        const zel_Point one = farCorner(m_drawing.records, record);
        corner = {std::max(corner.x, one.x), std::max(corner.y, one.y)};
    });
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

void RecordWriter::add(zelgraphic_kind kind, const Identity& identity, PackedRecord& record, PackedLook& look)
{
    if (!(look.strokeWidth <= LargestNumber && look.fontSize <= LargestNumber)) {
        m_diagnostics.fail("found a stroke or a text that is larger than 1e9, expected one within the drawing");
        return;
    }
    record.id = identity.id;
    record.name = identity.name;
    record.tooltip = identity.tooltip;
    look.layer = identity.layer;
    look.kind = static_cast<std::uint16_t>(kind);
    look.flag = identity.flag ? 1 : 0;
    m_drawing.records.add(record, look);
    if (identity.layer >= 0 && identity.layer < CommonLayers)
        m_commonLayers.set(static_cast<std::size_t>(identity.layer));
    else
        m_otherLayers.insert(identity.layer);
}

} // namespace mirn::zelsvg
