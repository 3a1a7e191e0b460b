// SPDX-License-Identifier: MIT
#include "graphics/zelrectitem.h"

#include "graphics/elements/drawingcontroller.h"
#include "graphics/hovertext.h"
#include "platform/contract/zelchipengine.h"

#include <QRectF>

namespace mirn::zelchipview {

ZELRectItem::ZELRectItem(int id)
    : FillableItem(id)
{
    if (attribute()) {
        setRect(value<QRectF>(ATTR_RECT));
        synchronise({});
    }
}

ZELRectItem::~ZELRectItem()
{
    leaveScene(scene());
}

paintrules::Look ZELRectItem::look(ElementStates states) const
{
    return paintrules::rectLook(value<unsigned int>(ATTR_FILL_COLOR), value<unsigned int>(ATTR_STROKE_COLOR),
        value<double>(ATTR_STROKE_WIDTH), states);
}

void ZELRectItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    DrawingController& controller = DrawingController::current();
    updateToolTip();
    controller.hoverText().show(toolTip(), this);
    if (acceptDragIfAllowed(event)) {
        const int id = attribute()->itemId;
        // I/O supplies belong to a whole bank; marking the one rect under the pointer would mislead.
        if (controller.getResourceType(QStringLiteral("%1").arg(id)) != ZEL_RESOURCE_UVCCIO)
            controller.addSelctedItem(id, false);
        controller.highlightProbPlaceItems(event, id);
    }
    QGraphicsRectItem::dragEnterEvent(event);
}

void ZELRectItem::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    deselect();
    // The next site has been entered by now and may have shown its own text.
    DrawingController::current().hoverText().hideIfOwnedBy(this);
    QGraphicsRectItem::dragLeaveEvent(event);
}

void ZELRectItem::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    dropHere();
    deselect();
    QGraphicsRectItem::dropEvent(event);
}

void ZELRectItem::deselect() const
{
    if (attribute())
        DrawingController::current().removeSelectedItem(attribute()->itemId);
}

} // namespace mirn::zelchipview
