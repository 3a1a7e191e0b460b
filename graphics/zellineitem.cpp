// SPDX-License-Identifier: MIT
#include "graphics/zellineitem.h"

#include <QLineF>

#include <cmath>

namespace mirn::zelchipview {

namespace {

bool isFinite(const QLineF& line)
{
    return std::isfinite(line.x1()) && std::isfinite(line.y1()) && std::isfinite(line.x2()) && std::isfinite(line.y2());
}

} // namespace

ZELLineItem::ZELLineItem(int id)
    : ChipElement(id, Placing::WhenShown)
{ }

ZELLineItem::~ZELLineItem()
{
    leaveScene(scene());
}

QRectF ZELLineItem::boundingRect() const
{
    return QGraphicsLineItem::boundingRect();
}

void ZELLineItem::paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget)
{
    ElementStates states;
    if (prepareToPaint(states))
        QGraphicsLineItem::paint(painter, option, widget);
}

bool ZELLineItem::synchronise(ElementStates)
{
    const QLineF given = value<QLineF>(ATTR_LINE);
    // A NaN compares unequal even to itself, so the line would be set, and repainted, forever.
    const QLineF shown = isFinite(given) ? given : QLineF();
    const QPen stroke = paintrules::linePen(value<unsigned int>(ATTR_STROKE_COLOR), value<double>(ATTR_STROKE_WIDTH));
    if (shown == line() && stroke == pen())
        return false;
    setLine(shown);
    setPen(stroke);
    return true;
}

QVariant ZELLineItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    noticeChange(change);
    return QGraphicsLineItem::itemChange(change, value);
}

void ZELLineItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    acceptDragIfAllowed(event);
    QGraphicsLineItem::dragEnterEvent(event);
}

void ZELLineItem::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    QGraphicsLineItem::dragLeaveEvent(event);
}

void ZELLineItem::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    dropHere();
    QGraphicsLineItem::dropEvent(event);
}

} // namespace mirn::zelchipview
