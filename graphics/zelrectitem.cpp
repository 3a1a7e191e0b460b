// SPDX-License-Identifier: MIT
#include "graphics/zelrectitem.h"

#include "chipview/zelchipviewdatabase.h"
#include "placement/hovertext.h"
#include "platform/contract/zelchipengine.h"

#include <QRectF>

namespace mirn::zelchipview {

ZELRectItem::ZELRectItem(int id)
    : ChipElement(id)
{
    if (attribute())
        setRect(value<QRectF>(ATTR_RECT));
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
    if (prepareToPaint())
        QGraphicsRectItem::paint(painter, option, widget);
}

void ZELRectItem::synchronise(ElementStates states)
{
    setPen(paintrules::rectPen(value<unsigned int>(ATTR_STROKE_COLOR), value<double>(ATTR_STROKE_WIDTH), states));
    setBrush(paintrules::rectBrush(value<unsigned int>(ATTR_FILL_COLOR), states));
}

QVariant ZELRectItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemSceneChange)
        leaveScene(scene());
    else if (change == ItemSceneHasChanged)
        enterScene(scene());
    return QGraphicsRectItem::itemChange(change, value);
}

void ZELRectItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    database->hoverText().show(toolTip(), this);
    if (acceptDragIfAllowed(event)) {
        const int id = attribute()->itemId;
        // I/O supplies belong to a whole bank; marking the one rect under the pointer would mislead.
        if (database->getResourceType(QStringLiteral("%1").arg(id)) != ZEL_RESOURCE_UVCCIO)
            database->addSelctedItem(id, false);
        database->highlightProbPlaceItems(event, id);
    }
    QGraphicsRectItem::dragEnterEvent(event);
}

void ZELRectItem::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    deselect();
    // The next site has been entered by now and may have shown its own text.
    ZELChipViewDatabase::getInstance()->hoverText().hideIfOwnedBy(this);
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
        ZELChipViewDatabase::getInstance()->removeSelectedItem(attribute()->itemId);
}

} // namespace mirn::zelchipview
