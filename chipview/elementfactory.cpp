// SPDX-License-Identifier: MIT
#include "chipview/elementfactory.h"

#include "graphics/zellineattribute.h"
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonattribute.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectattribute.h"
#include "graphics/zelrectitem.h"
#include "graphics/zeltextattribute.h"
#include "graphics/zeltextitem.h"
#include "platform/contract/zelgraphicrecords.h"

namespace mirn::zelchipview {

namespace {

using AttributePointer = std::unique_ptr<ZELGraphicItemAttribute>;

AttributePointer newAttribute(const zel_Line& line)
{
    return std::make_unique<ZELLineAttribute>(line.x1, line.y1, line.x2, line.y2, line.strokeColor, line.strokeWidth);
}

AttributePointer newAttribute(const zel_Rect& rect)
{
    return std::make_unique<ZELRectAttribute>(
        rect.x, rect.y, rect.width, rect.height, rect.fillColor, rect.strokeColor, rect.strokeWidth, rect.text);
}

AttributePointer newAttribute(const zel_Polygon& polygon)
{
    return std::make_unique<ZELPolygonAttribute>(
        polygon.points, polygon.fillColor, polygon.strokeColor, polygon.strokeWidth, polygon.text);
}

AttributePointer newAttribute(const zel_Text& text)
{
    std::vector<tspan> spans = text.spans;
    return std::make_unique<ZELTextAttribute>(
        text.text, text.x, text.y, text.fontSize, text.fontFamily, text.fillColor, text.rotation, spans, 0.0, 0.0);
}

template <typename Record> AttributePointer attributeFor(const zel_SingleGraphItem& record)
{
    const auto* typed = dynamic_cast<const Record*>(&record);
    return typed ? newAttribute(*typed) : nullptr;
}

AttributePointer attributeOf(const zel_SingleGraphItem& record)
{
    switch (record.kind) {
    case ZEL_GRAPHIC_LINE:
        return attributeFor<zel_Line>(record);
    case ZEL_GRAPHIC_RECT:
        return attributeFor<zel_Rect>(record);
    case ZEL_GRAPHIC_POLYGON:
        return attributeFor<zel_Polygon>(record);
    case ZEL_GRAPHIC_TEXT:
        return attributeFor<zel_Text>(record);
    default:
        return nullptr;
    }
}

} // namespace

std::unique_ptr<ZELGraphicItemAttribute> makeAttribute(const zel_SingleGraphItem& record, int loadNumber)
{
    AttributePointer attribute = attributeOf(record);
    if (attribute) {
        attribute->setAttribute(record);
        attribute->sequence = loadNumber;
    }
    return attribute;
}

QGraphicsItem* makeItem(int kind, int loadNumber)
{
    switch (kind) {
    case ZEL_GRAPHIC_LINE:
        return new ZELLineItem(loadNumber);
    case ZEL_GRAPHIC_RECT:
        return new ZELRectItem(loadNumber);
    case ZEL_GRAPHIC_POLYGON:
        return new ZELPolygonItem(loadNumber);
    default:
        return new ZELTextItem(loadNumber);
    }
}

} // namespace mirn::zelchipview
