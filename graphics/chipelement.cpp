// SPDX-License-Identifier: MIT
#include "graphics/chipelement.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsItem>
#include <QGraphicsSceneDragDropEvent>

namespace mirn::zelchipview {

ChipElement::ChipElement(int loadNumber)
    : m_loadNumber(loadNumber)
    , m_attribute(ZELChipViewDatabase::getInstance()->getGraphicItemAttribute(loadNumber))
{ }

ChipElement::~ChipElement() = default;

bool ChipElement::prepareToPaint()
{
    QGraphicsItem* item = graphicsItem();
    auto* scene = qobject_cast<ZelGraphicsScene*>(item->scene());
    if (!m_attribute || !scene || !scene->isLayerVisible(m_attribute->layer))
        return false;
    if (item->toolTip() != m_attribute->toolTip)
        item->setToolTip(m_attribute->toolTip);
    synchronise(scene->statesOf(m_attribute->itemId));
    return true;
}

void ChipElement::enterScene(QGraphicsScene* scene)
{
    if (auto* chipScene = qobject_cast<ZelGraphicsScene*>(scene))
        chipScene->elementIndex().add(this);
}

void ChipElement::leaveScene(QGraphicsScene* scene)
{
    // A scene that is being destroyed is no chip scene any more; its index is gone then.
    if (auto* chipScene = qobject_cast<ZelGraphicsScene*>(scene))
        chipScene->elementIndex().remove(this);
}

bool ChipElement::acceptDragIfAllowed(QGraphicsSceneDragDropEvent* event) const
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    if (m_attribute && !database->canDrop(event, m_attribute->itemId))
        return true;
    database->clearHighlightedProbPlaceItems();
    event->ignore();
    return false;
}

void ChipElement::dropHere() const
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    database->clearHighlightedProbPlaceItems();
    if (m_attribute)
        database->drop(m_attribute->itemId);
}

} // namespace mirn::zelchipview
