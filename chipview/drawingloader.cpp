// SPDX-License-Identifier: MIT
#include "chipview/drawingloader.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zellineattribute.h"
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonattribute.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectattribute.h"
#include "graphics/zelrectitem.h"
#include "graphics/zeltextattribute.h"
#include "graphics/zeltextitem.h"
#include "platform/contract/svgparser.h"

#include <QMetaObject>

#include <memory>

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

// Null for a record that is not drawn.
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

QGraphicsItem* newItem(int kind, int loadNumber)
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

} // namespace

DrawingLoader::DrawingLoader(ZelGraphicsScene* scene)
    : m_scene(scene)
{ }

void DrawingLoader::load(const SVGParser& parser)
{
    m_items.reserve(parser.graphicItemCount());
    parser.visitGraphicItems([this](const zel_SingleGraphItem& record) {
        if (AttributePointer attribute = attributeOf(record))
            addElement(record, attribute.release());
        return true;
    });
    numberItems();
    for (std::unique_ptr<QGraphicsItem>& item : m_items)
        m_scene->addItem(item.release());
    m_items.clear();
    polishItems();
}

void DrawingLoader::addElement(const zel_SingleGraphItem& record, ZELGraphicItemAttribute* attribute)
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    const int number = static_cast<int>(m_items.size()) + 1;
    attribute->setAttribute(record);
    attribute->sequence = number;
    // The items of an earlier load still paint from the attribute that is replaced: it lives as long as their scene.
    if (ZELGraphicItemAttribute* replaced = database->getGraphicItemAttribute(number))
        replaced->setParent(m_scene);
    database->setGraphicAttribute(number, attribute);
    m_items.emplace_back(newItem(record.kind, number));
}

// Qt keeps the data of all items in one table; filling it in one go takes a quarter of the time that it takes between
// other work.
void DrawingLoader::numberItems()
{
    int number = 0;
    for (const std::unique_ptr<QGraphicsItem>& item : m_items) {
        item->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, ++number);
        item->setZValue(number);
    }
}

// What a scene does once for each new item waits for the next turn of the event loop; until then the scene looks for
// every item that goes among all of these, and closing a window at once would take a time quadratic in their number.
// The slot is the scene's own, by its name since Qt 4; without it that time is all that is lost.
void DrawingLoader::polishItems()
{
    if (m_scene->metaObject()->indexOfMethod("_q_polishItems()") >= 0)
        QMetaObject::invokeMethod(m_scene, "_q_polishItems");
}

} // namespace mirn::zelchipview
