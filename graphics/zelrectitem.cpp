// SPDX-License-Identifier: MIT
#include "graphics/zelrectitem.h"

#include "graphics/elements/drawingcontroller.h"
#include "graphics/hovertext.h"
#include "platform/contract/zelchipengine.h"

#include <QRectF>

namespace mirn::zelchipview {

ZELRectItem::ZELRectItem(int id)
    : ChipElement(id, Placing::AtOnce)
{
    if (attribute()) {
        setRect(value<QRectF>(ATTR_RECT));
        synchronise({});
    }
    setAcceptDrops(true);
}

ZELRectItem::~ZELRectItem()
{
    leaveScene(scene());
}

QRectF ZELRectItem::boundingRect() const
{
    return QGraphicsRectItem::boundingRect();
}

void ZELRectItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    ElementStates states;
    if (!prepareToPaint(states))
        return;
    updateBrush(states);
    QGraphicsRectItem::paint(painter, option, widget);
}

paintrules::Look ZELRectItem::look(ElementStates states) const
{
    return paintrules::rectLook(value<unsigned int>(ATTR_FILL_COLOR), value<unsigned int>(ATTR_STROKE_COLOR),
        value<double>(ATTR_STROKE_WIDTH), states);
}

bool ZELRectItem::synchronise(ElementStates states)
{
    const QPen border = paintrules::borderPen(look(states));
    if (border == QGraphicsRectItem::pen())
        return false;
    setPen(border);
    return true;
}

void ZELRectItem::updateBrush(ElementStates states)
{
    setBrush(paintrules::fillBrush(look(states)));
}

QPen ZELRectItem::pen() const
{
    const std::optional<ElementStates> states = shownStates();
    return states ? paintrules::borderPen(look(*states)) : QGraphicsRectItem::pen();
}

QBrush ZELRectItem::brush() const
{
    const std::optional<ElementStates> states = shownStates();
    return states ? paintrules::fillBrush(look(*states)) : QGraphicsRectItem::brush();
}

QVariant ZELRectItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    noticeChange(change);
    return QGraphicsRectItem::itemChange(change, value);
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
