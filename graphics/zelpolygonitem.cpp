// SPDX-License-Identifier: MIT
#include "graphics/zelpolygonitem.h"

#include <QPolygonF>

namespace mirn::zelchipview {

ZELPolygonItem::ZELPolygonItem(int id)
    : FillableItem(id)
{
    if (attribute()) {
        setPolygon(value<QPolygonF>(ATTR_POINTS));
        synchronise({});
    }
}

ZELPolygonItem::~ZELPolygonItem()
{
    leaveScene(scene());
}

paintrules::Look ZELPolygonItem::look(ElementStates states) const
{
    return paintrules::polygonLook(value<unsigned int>(ATTR_FILL_COLOR), states);
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
