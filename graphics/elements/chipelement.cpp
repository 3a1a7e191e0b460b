// SPDX-License-Identifier: MIT
#include "graphics/elements/chipelement.h"

#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/chipscene.h"
#include "graphics/elements/drawingcontroller.h"

#include <QGraphicsSceneDragDropEvent>

namespace mirn::zelchipview {

namespace {

void showToolTip(QGraphicsItem* item, const QString& text)
{
    if (item->toolTip() != text)
        item->setToolTip(text);
}

} // namespace

ChipElement::ChipElement(int loadNumber, Placing placing)
    : m_loadNumber(loadNumber)
    , m_attribute(DrawingController::current().attributes().find(loadNumber))
    , m_isPending(placing == Placing::WhenShown)
{ }

ChipElement::~ChipElement() = default;

bool ChipElement::prepareToPaint(ElementStates& states)
{
    QGraphicsItem* item = graphicsItem();
    auto* scene = qobject_cast<ChipScene*>(item->scene());
    if (!m_attribute || !scene || !scene->isLayerVisible(m_attribute->layer))
        return false;
    showToolTip(item, m_attribute->toolTip);
    states = scene->statesOf(m_attribute->itemId);
    synchronise(states);
    return true;
}

std::optional<ElementStates> ChipElement::shownStates() const
{
    const QGraphicsItem* item = const_cast<ChipElement*>(this)->graphicsItem(); // graphicsItem() has no const form
    auto* scene = qobject_cast<ChipScene*>(item->scene());
    if (!m_attribute || m_isPending || !scene || !scene->isLayerVisible(m_attribute->layer))
        return std::nullopt;
    return scene->statesOf(m_attribute->itemId);
}

void ChipElement::updateToolTip()
{
    QGraphicsItem* item = graphicsItem();
    auto* scene = qobject_cast<ChipScene*>(item->scene());
    if (m_attribute && scene && scene->isLayerVisible(m_attribute->layer))
        takeOverToolTip();
}

void ChipElement::takeOverToolTip()
{
    showToolTip(graphicsItem(), m_attribute->toolTip);
}

void ChipElement::noticeChange(QGraphicsItem::GraphicsItemChange change)
{
    QGraphicsScene* scene = graphicsItem()->scene();
    switch (change) {
    case QGraphicsItem::ItemSceneChange:
        leaveScene(scene);
        break;
    case QGraphicsItem::ItemSceneHasChanged:
        enterScene(scene);
        break;
    case QGraphicsItem::ItemZValueHasChanged:
        if (auto* chipScene = qobject_cast<ChipScene*>(scene))
            chipScene->elementRestacked(this);
        break;
    case QGraphicsItem::ItemVisibleHasChanged:
    case QGraphicsItem::ItemOpacityHasChanged:
    case QGraphicsItem::ItemFlagsHaveChanged:
    case QGraphicsItem::ItemSelectedHasChanged:
    case QGraphicsItem::ItemParentHasChanged:
    case QGraphicsItem::ItemChildAddedChange:
    case QGraphicsItem::ItemChildRemovedChange:
        if (auto* chipScene = qobject_cast<ChipScene*>(scene))
            chipScene->elementChanged(this);
        break;
    default:
        break;
    }
}

void ChipElement::enterScene(QGraphicsScene* scene)
{
    if (auto* chipScene = qobject_cast<ChipScene*>(scene))
        chipScene->elementEntered(this);
}

void ChipElement::leaveScene(QGraphicsScene* scene)
{
    // During the destructor of a scene the cast returns null; the scene has forgotten its elements by then.
    if (auto* chipScene = qobject_cast<ChipScene*>(scene))
        chipScene->elementLeaves(this);
}

bool ChipElement::acceptDragIfAllowed(QGraphicsSceneDragDropEvent* event) const
{
    DrawingController& controller = DrawingController::current();
    if (m_attribute && !controller.canDrop(event, m_attribute->itemId))
        return true;
    controller.clearHighlightedProbPlaceItems();
    event->ignore();
    return false;
}

void ChipElement::dropHere() const
{
    DrawingController& controller = DrawingController::current();
    controller.clearHighlightedProbPlaceItems();
    if (m_attribute)
        controller.drop(m_attribute->itemId);
}

} // namespace mirn::zelchipview
