// SPDX-License-Identifier: MIT
#include "graphics/zelpolygonitem.h"

#include <QPolygonF>

namespace mirn::zelchipview {

ZELPolygonItem::ZELPolygonItem(int id)
    : ChipElement(id, Placing::AtOnce)
{
    if (attribute()) {
        setPolygon(value<QPolygonF>(ATTR_POINTS));
        synchronise({});
    }
    setAcceptDrops(true);
}

ZELPolygonItem::~ZELPolygonItem()
{
    leaveScene(scene());
}

QRectF ZELPolygonItem::boundingRect() const
{
    return QGraphicsPolygonItem::boundingRect();
}

void ZELPolygonItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    ElementStates states;
    if (!prepareToPaint(states))
        return;
    updateBrush(states);
    QGraphicsPolygonItem::paint(painter, option, widget);
}

paintrules::Look ZELPolygonItem::look(ElementStates states) const
{
    return paintrules::polygonLook(value<unsigned int>(ATTR_FILL_COLOR), states);
}

bool ZELPolygonItem::synchronise(ElementStates states)
{
    const QPen border = paintrules::borderPen(look(states));
    if (border == QGraphicsPolygonItem::pen())
        return false;
    setPen(border);
    return true;
}

void ZELPolygonItem::updateBrush(ElementStates states)
{
    setBrush(paintrules::fillBrush(look(states)));
}

QPen ZELPolygonItem::pen() const
{
    const std::optional<ElementStates> states = shownStates();
    return states ? paintrules::borderPen(look(*states)) : QGraphicsPolygonItem::pen();
}

QBrush ZELPolygonItem::brush() const
{
    const std::optional<ElementStates> states = shownStates();
    return states ? paintrules::fillBrush(look(*states)) : QGraphicsPolygonItem::brush();
}

QVariant ZELPolygonItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    noticeChange(change);
    return QGraphicsPolygonItem::itemChange(change, value);
}

void ZELPolygonItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    acceptDragIfAllowed(event);
    QGraphicsPolygonItem::dragEnterEvent(event);
}

void ZELPolygonItem::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    QGraphicsPolygonItem::dragLeaveEvent(event);
}

void ZELPolygonItem::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    dropHere();
    QGraphicsPolygonItem::dropEvent(event);
}

} // namespace mirn::zelchipview
