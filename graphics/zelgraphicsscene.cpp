// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsscene.h"

#include "chipview/zelchipviewdatabase.h"
#include "dialogs/graphicitemdynamicattribute.h"
#include "graphics/chipelement.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsview.h"
#include "placement/hovertext.h"

#include <QGraphicsItem>
#include <QGraphicsSceneDragDropEvent>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// From the drag's pointer to the hover text, in screen pixels: clear of the dragged icon.
constexpr QPoint HoverTextOffset(30, 30);

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

unsigned int fillColorOf(ZELGraphicItemAttribute& attribute)
{
    const void* fill = attribute.getAttribute(ATTR_FILL_COLOR);
    return fill ? *static_cast<const unsigned int*>(fill) : 0U;
}

// Gives whether anything changed.
bool applyDynamicValues(ZELGraphicItemAttribute& attribute, const GraphicItemDynamicAttribute& values)
{
    const unsigned int previousFill = fillColorOf(attribute);
    const QString previousToolTip = attribute.toolTip;
    if (values.fill == ZEL_DYNAMIC_EMPTY_STRING)
        attribute.setToDefaultValue(ATTR_FILL_COLOR);
    else
        attribute.setFillColor(values.fill.mid(1).toUInt(nullptr, 16));
    if (values.popup == ZEL_DYNAMIC_EMPTY_STRING)
        attribute.setToDefaultValue(ATTR_TOOLTIP);
    else
        attribute.toolTip = values.popup;
    return fillColorOf(attribute) != previousFill || attribute.toolTip != previousToolTip;
}

} // namespace

ZelGraphicsScene::ZelGraphicsScene(QObject* parent)
    : QGraphicsScene(parent)
{ }

ZelGraphicsScene::~ZelGraphicsScene() = default;

bool ZelGraphicsScene::selectedItemContains(int id) const
{
    return database().selectedIds().contains(id);
}

bool ZelGraphicsScene::highlightedItemContains(int id) const
{
    return database().highlightedIds().contains(id);
}

bool ZelGraphicsScene::filterdItemContains(int id) const
{
    return !database().isFilterEnable() || database().filteredIds().contains(id);
}

ElementStates ZelGraphicsScene::statesOf(int id) const
{
    ElementStates states;
    states.setFlag(ElementState::Selected, selectedItemContains(id));
    states.setFlag(ElementState::Filtered, database().isFilterEnable() && filterdItemContains(id));
    states.setFlag(ElementState::Highlighted, highlightedItemContains(id));
    return states;
}

void ZelGraphicsScene::addSelectedItem(QGraphicsItem* item)
{
    if (!item)
        return;
    const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
    if (const ZELGraphicItemAttribute* attribute = database().getGraphicItemAttribute(loadNumber))
        database().addSelctedItem(attribute->itemId, true);
}

void ZelGraphicsScene::addSelectedItem(const QList<QGraphicsItem*>& items)
{
    for (QGraphicsItem* item : items)
        addSelectedItem(item);
}

void ZelGraphicsScene::clearSelectedItems()
{
    database().selectedIds().clear();
}

QList<int>& ZelGraphicsScene::getVisibleLayers()
{
    const QList<QGraphicsView*> all = views();
    auto* view = all.isEmpty() ? nullptr : qobject_cast<ZelGraphicsView*>(all.first());
    if (view)
        return view->getVisibleLayers();
    static QList<int> none;
    none.clear();
    return none;
}

bool ZelGraphicsScene::isLayerVisible(int layer)
{
    const QList<int>& layers = getVisibleLayers();
    return std::find(layers.rbegin(), layers.rend(), layer) != layers.rend();
}

void ZelGraphicsScene::setGlobalParameter(const zel_Parameter& parameter)
{
    m_parameter = parameter;
}

void ZelGraphicsScene::refresh()
{
    const QMap<QString, GraphicItemDynamicAttribute>& dynamicInfo = database().getGraphicsDynamicInfo();
    for (auto entry = dynamicInfo.cbegin(); entry != dynamicInfo.cend(); ++entry) {
        const int id = entry.key().toInt();
        if (QString::number(id) != entry.key())
            continue;
        const QList<ChipElement*> elements = m_index.elements(id);
        for (ChipElement* element : elements) {
            ZELGraphicItemAttribute* attribute = database().getGraphicItemAttribute(element->loadNumber());
            // A later load may have put another element under this load number.
            if (attribute && attribute->itemId == id && applyDynamicValues(*attribute, entry.value()))
                repaint(element);
        }
    }
}

void ZelGraphicsScene::synchroniseShownElements()
{
    for (ChipElement* element : m_index.takePending(getVisibleLayers()))
        element->synchronise(statesOf(element->attribute()->itemId));
}

void ZelGraphicsScene::repaintElements(const QSet<int>& elementIds)
{
    for (int id : elementIds) {
        const QList<ChipElement*> elements = m_index.elements(id);
        for (ChipElement* element : elements)
            repaint(element);
    }
}

QList<QGraphicsItem*> ZelGraphicsScene::itemsOf(int elementId) const
{
    QList<QGraphicsItem*> items;
    const QList<ChipElement*> elements = m_index.elements(elementId);
    for (ChipElement* element : elements)
        items.append(element->graphicsItem());
    return items;
}

void ZelGraphicsScene::repaint(ChipElement* element)
{
    const ZELGraphicItemAttribute* attribute = element->attribute();
    if (!isLayerVisible(attribute->layer))
        return;
    element->synchronise(statesOf(attribute->itemId));
    element->graphicsItem()->update();
}

void ZelGraphicsScene::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    QGraphicsScene::dragEnterEvent(event);
}

void ZelGraphicsScene::dragMoveEvent(QGraphicsSceneDragDropEvent* event)
{
    database().highlightProbPlaceItems();
    database().hoverText().moveTo(event->screenPos() + HoverTextOffset);
    QGraphicsScene::dragMoveEvent(event);
}

void ZelGraphicsScene::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    database().hoverText().hide();
    QGraphicsScene::dragLeaveEvent(event);
}

void ZelGraphicsScene::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    database().clearHighlightedProbPlaceItems();
    database().hoverText().hide();
    QGraphicsScene::dropEvent(event);
}

void ZelGraphicsScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseMoveEvent(event);
}

} // namespace mirn::zelchipview
