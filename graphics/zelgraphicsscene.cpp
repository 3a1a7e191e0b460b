// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsscene.h"

#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/chipelement.h"
#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/hovertext.h"
#include "graphics/sceneelements.h"
#include "graphics/zelconstants.h"

#include <QGraphicsItem>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneHelpEvent>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// The distance from the pointer to the hover text, in screen pixels, which keeps it clear of the drag icon.
constexpr QPoint HoverTextOffset(30, 30);

} // namespace

struct ZelGraphicsScene::Parts
{
    explicit Parts(ZelGraphicsScene& scene)
        : elements(scene)
    { }

    SceneElements elements;
    zel_Parameter parameter;
    QList<QGraphicsItem*> zoomItems;
    bool areItemsOnDemand = false;
};

ZelGraphicsScene::ZelGraphicsScene(QObject* parent)
    : ChipScene(parent)
    , m_parts(std::make_unique<Parts>(*this))
{ }

ZelGraphicsScene::~ZelGraphicsScene() = default;

bool ZelGraphicsScene::selectedItemContains(int id) const
{
    return DrawingController::current().selectedIds().contains(id);
}

bool ZelGraphicsScene::highlightedItemContains(int id) const
{
    return DrawingController::current().highlightedIds().contains(id);
}

bool ZelGraphicsScene::filterdItemContains(int id) const
{
    return !DrawingController::current().isFilterEnable() || DrawingController::current().filteredIds().contains(id);
}

ElementStates ZelGraphicsScene::statesOf(int id) const
{
    ElementStates states;
    states.setFlag(ElementState::Selected, selectedItemContains(id));
    states.setFlag(ElementState::Filtered, DrawingController::current().isFilterEnable() && filterdItemContains(id));
    states.setFlag(ElementState::Highlighted, highlightedItemContains(id));
    return states;
}

void ZelGraphicsScene::addSelectedItem(QGraphicsItem* item)
{
    if (!item)
        return;
    const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
    if (const ZELGraphicItemAttribute* attribute = DrawingController::current().attributes().find(loadNumber))
        DrawingController::current().addSelctedItem(attribute->itemId, true);
}

void ZelGraphicsScene::addSelectedItem(const QList<QGraphicsItem*>& items)
{
    for (QGraphicsItem* item : items)
        addSelectedItem(item);
}

void ZelGraphicsScene::clearSelectedItems()
{
    DrawingController::current().selectedIds().clear();
}

QList<int>& ZelGraphicsScene::getVisibleLayers()
{
    return m_parts->elements.visibleLayers();
}

bool ZelGraphicsScene::isLayerVisible(int layer)
{
    const QList<int>& layers = getVisibleLayers();
    return std::find(layers.rbegin(), layers.rend(), layer) != layers.rend();
}

void ZelGraphicsScene::setGlobalParameter(const zel_Parameter& parameter)
{
    m_parts->parameter = parameter;
}

const zel_Parameter& ZelGraphicsScene::globalParameter() const
{
    return m_parts->parameter;
}

QList<QGraphicsItem*>& ZelGraphicsScene::zoomItems()
{
    return m_parts->zoomItems;
}

void ZelGraphicsScene::refresh()
{
    m_parts->elements.applyDynamicValues(DrawingController::current().getGraphicsDynamicInfo());
}

int ZelGraphicsScene::elementCount() const
{
    return m_parts->elements.count();
}

void ZelGraphicsScene::setItemsOnDemand(bool isOn)
{
    m_parts->areItemsOnDemand = isOn;
}

bool ZelGraphicsScene::areItemsOnDemand() const
{
    return m_parts->areItemsOnDemand;
}

void ZelGraphicsScene::makeItemsIn(const QRectF& area)
{
    m_parts->elements.makeItemsIn(area);
}

void ZelGraphicsScene::makeAllItems()
{
    m_parts->elements.makeAllItems();
}

QList<QGraphicsItem*> ZelGraphicsScene::itemsOf(int elementId)
{
    return m_parts->elements.itemsOf(elementId);
}

SceneElements& ZelGraphicsScene::elements()
{
    return m_parts->elements;
}

bool ZelGraphicsScene::hasFewTexts() const
{
    return m_parts->elements.index().hasFewTexts();
}

void ZelGraphicsScene::elementEntered(ChipElement* element)
{
    m_parts->elements.index().add(element);
}

void ZelGraphicsScene::elementLeaves(ChipElement* element)
{
    m_parts->elements.index().remove(element);
}

void ZelGraphicsScene::elementRestacked(ChipElement* element)
{
    m_parts->elements.index().zValueChanged(element);
}

void ZelGraphicsScene::elementChanged(ChipElement* element)
{
    m_parts->elements.index().updateQtPainting(element);
}

void ZelGraphicsScene::helpEvent(QGraphicsSceneHelpEvent* event)
{
    makeItemsIn(QRectF(event->scenePos(), QSizeF(0, 0)));
    const QList<QGraphicsItem*> found = items(event->scenePos());
    for (QGraphicsItem* item : found) {
        if (auto* element = dynamic_cast<ChipElement*>(item))
            element->updateToolTip();
    }
    QGraphicsScene::helpEvent(event);
}

void ZelGraphicsScene::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    m_parts->elements.synchroniseAt(event->scenePos());
    QGraphicsScene::dragEnterEvent(event);
}

void ZelGraphicsScene::dragMoveEvent(QGraphicsSceneDragDropEvent* event)
{
    m_parts->elements.synchroniseAt(event->scenePos());
    DrawingController::current().highlightProbPlaceItems();
    DrawingController::current().hoverText().moveTo(event->screenPos() + HoverTextOffset);
    QGraphicsScene::dragMoveEvent(event);
}

void ZelGraphicsScene::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    DrawingController::current().hoverText().hide();
    QGraphicsScene::dragLeaveEvent(event);
}

void ZelGraphicsScene::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    DrawingController::current().clearHighlightedProbPlaceItems();
    DrawingController::current().hoverText().hide();
    QGraphicsScene::dropEvent(event);
}

void ZelGraphicsScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseMoveEvent(event);
}

} // namespace mirn::zelchipview
