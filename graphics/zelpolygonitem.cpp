// SPDX-License-Identifier: MIT
#include "graphics/zelpolygonitem.h"

#include <QPolygonF>

namespace mirn::zelchipview {

ZELPolygonItem::ZELPolygonItem(int id)
    : ChipElement(id)
{
    if (attribute())
        setPolygon(value<QPolygonF>(ATTR_POINTS));
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
    if (prepareToPaint())
        QGraphicsPolygonItem::paint(painter, option, widget);
}

void ZELPolygonItem::synchronise(ElementStates states)
{
    setPen(paintrules::polygonPen(states));
    setBrush(paintrules::polygonBrush(value<unsigned int>(ATTR_FILL_COLOR), states));
}

QVariant ZELPolygonItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemSceneChange)
        leaveScene(scene());
    else if (change == ItemSceneHasChanged)
        enterScene(scene());
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
