// SPDX-License-Identifier: MIT
#include "graphics/elements/chipelement.h"
#include "graphics/elements/elementindex.h"
#include "graphics/elements/paintrules.h"
#include "graphics/painting/displaylist.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

#include <QPolygonF>

// The display list of a drawing whose items are made on demand: its primitives come straight from the records. They are
// the same as those that the attributes made of these records would have.

namespace mirn::zelchipview {

void DisplayList::beginRecords(std::size_t count)
{
    m_elements.clear();
    m_elements.reserve(count);
    clear(count);
}

bool DisplayList::append(const zel_SingleGraphItem& record)
{
    Primitive made{};
    made.elementId = record.id;
    bool isTaken = false;
    switch (record.kind) {
    case ZEL_GRAPHIC_LINE:
        isTaken = takeAs<zel_Line>(record, made);
        break;
    case ZEL_GRAPHIC_RECT:
        isTaken = takeAs<zel_Rect>(record, made);
        break;
    case ZEL_GRAPHIC_POLYGON:
        isTaken = takeAs<zel_Polygon>(record, made);
        break;
    case ZEL_GRAPHIC_TEXT:
        isTaken = takeAs<zel_Text>(record, made);
        break;
    default:
        break;
    }
    if (!isTaken)
        return false;
    // Neighbours in the drawing are mostly on one layer.
    made.layer = m_primitives.empty() ? 0 : m_primitives.back().layer;
    setLayer(record.layer, made);
    m_primitives.push_back(made);
    m_elements.push_back(nullptr);
    m_attributes.push_back(nullptr);
    return true;
}

template <typename Record> bool DisplayList::takeAs(const zel_SingleGraphItem& record, Primitive& primitive)
{
    const auto* typed = dynamic_cast<const Record*>(&record);
    if (typed)
        take(*typed, primitive);
    return typed;
}

void DisplayList::take(const zel_Line& line, Primitive& primitive)
{
    primitive.kind = Primitive::Line;
    primitive.a = line.x1;
    primitive.b = line.y1;
    primitive.c = line.x2;
    primitive.d = line.y2;
    primitive.strokeColor = line.strokeColor;
    primitive.strokeWidth = line.strokeWidth;
}

void DisplayList::take(const zel_Rect& rect, Primitive& primitive)
{
    primitive.kind = Primitive::Rect;
    primitive.a = rect.x;
    primitive.b = rect.y;
    primitive.c = rect.width;
    primitive.d = rect.height;
    primitive.fillColor = rect.fillColor;
    primitive.strokeColor = rect.strokeColor;
    primitive.strokeWidth = rect.strokeWidth;
}

void DisplayList::take(const zel_Polygon& polygon, Primitive& primitive)
{
    primitive.kind = Primitive::Polygon;
    QPolygonF corners;
    corners.reserve(static_cast<int>(polygon.points.size()));
    for (const zel_Point& point : polygon.points)
        corners.append(QPointF(point.x, point.y));
    setCorners(corners, primitive);
    primitive.fillColor = polygon.fillColor;
}

void DisplayList::take(const zel_Text& text, Primitive& primitive)
{
    primitive.kind = Primitive::Text;
    ++m_textCount;
    primitive.a = text.x;
    primitive.b = text.y;
    primitive.c = text.rotation;
    primitive.d = paintrules::textPixelSize(text.fontSize);
    primitive.label = m_labels.label(fromEngineText(text.text), fromEngineText(text.fontFamily), text.fontSize);
    primitive.fillColor = text.fillColor;
}

void DisplayList::finishRecords(const ElementIndex& index)
{
    m_indexVersion = index.version();
    m_areBoundsOld = true;
}

bool DisplayList::isOutdated(const ElementIndex& index) const
{
    return m_indexVersion != index.version();
}

void DisplayList::adopt(ChipElement& element, int place)
{
    element.m_place = place;
    m_elements[place] = &element;
    m_attributes[place] = element.m_attribute;
}

ChipElement* DisplayList::element(int place)
{
    if (!m_elements[place] && m_make)
        m_make(place);
    return m_elements[place];
}

} // namespace mirn::zelchipview
