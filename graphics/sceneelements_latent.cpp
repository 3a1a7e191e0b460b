// SPDX-License-Identifier: MIT
#include "graphics/elements/chipelement.h"
#include "graphics/elements/elementindex.h"
#include "graphics/elements/enlarged.h"
#include "graphics/sceneelements.h"

#include <QGraphicsItem>

#include <utility>

// Elements that have no item yet. They are in the index and in the display list, where their slot and their place are
// their load number less 1. The first change of the paint order ends that: all items are made then.

namespace mirn::zelchipview {

namespace {

// Qt divides the scene by the number of its items. Those that are made lie where the pointer has been, so that they
// would all be in one part: divided into 4096 parts, a drag over a million elements takes a fraction of the time.
constexpr int TreeDepth = 12;

} // namespace

void SceneElements::beginLatent(std::size_t count)
{
    m_index.beginLatent(count);
    m_displayList.beginRecords(count);
}

bool SceneElements::addLatent(const zel_SingleGraphItem& record)
{
    if (!m_displayList.append(record))
        return false;
    const Primitive& primitive = m_displayList.primitive(m_displayList.size() - 1);
    m_index.addLatent(primitive.elementId, primitive.kind == Primitive::Text);
    return true;
}

void SceneElements::finishLatent(ItemMaker makeItem)
{
    m_makeItem = std::move(makeItem);
    m_index.setMaker([this](int slot) { return make(slot); });
    m_displayList.setMaker([this](int place) { make(place); });
    m_displayList.finishRecords(m_index);
    m_scene.setBspTreeDepth(TreeDepth);
}

void SceneElements::dropLatent()
{
    m_index.dropLatent();
    m_displayList.beginRecords(0);
}

ChipElement* SceneElements::make(int place)
{
    QGraphicsItem* item = m_makeItem(place + 1);
    giveGeometry(item);
    m_index.startMaking(place);
    if (item)
        m_scene.addItem(item); // the scene owns it, and the item enters the index
    ChipElement* element = m_index.finishMaking(place);
    if (!element)
        return nullptr;
    m_displayList.adopt(*element, place);
    takeOverState(*element);
    return element;
}

// An item that had no size yet is given it before it enters the scene: Qt takes a change of nothing for one of the
// whole scene.
void SceneElements::giveGeometry(QGraphicsItem* item)
{
    auto* element = dynamic_cast<ChipElement*>(item);
    const ZELGraphicItemAttribute* attribute = element ? element->attribute() : nullptr;
    if (attribute && m_index.wasShown(attribute->layer))
        element->synchronise(m_scene.statesOf(attribute->itemId));
}

// Brings a new item to the state that it would have if it had been there all the time.
void SceneElements::takeOverState(ChipElement& element)
{
    const ZELGraphicItemAttribute& attribute = *element.attribute();
    if (m_index.wasShown(attribute.layer)) {
        m_index.settle(&element);
        element.updateToolTip();
    }
    if (element.isPending())
        return;
    const ElementStates states = m_scene.statesOf(attribute.itemId);
    element.synchronise(states);
    if (m_index.hasFewItems() && m_scene.isLayerVisible(attribute.layer))
        element.updateBrush(states);
}

bool SceneElements::isPendingAt(int place) const
{
    if (const ChipElement* element = m_displayList.knownElement(place))
        return element->isPending();
    const Primitive& primitive = m_displayList.primitive(place);
    const bool waits = primitive.kind == Primitive::Line || primitive.kind == Primitive::Text;
    return waits && !m_index.wasShown(m_displayList.layers()[primitive.layer]);
}

void SceneElements::makeItemsIn(const QRectF& area)
{
    if (!m_index.hasLatent())
        return;
    DisplayList& list = displayList();
    const QRectF reach = enlarged(area, 1);
    for (int place : list.placesIn(reach)) {
        // A line may have no width, which intersects nothing.
        if (enlarged(list.boundsOf(place), 1).intersects(reach))
            (void)list.element(place);
    }
}

// An item that does not come is a gap in the index, so this ends.
void SceneElements::makeAllItems()
{
    if (!m_index.hasLatent())
        return;
    suspendForeignItemDetection();
    for (int place = 0; place < m_displayList.size(); ++place)
        (void)m_displayList.element(place);
    m_scene.setBspTreeDepth(0); // as deep as Qt finds it right
    resumeForeignItemDetection();
}

bool SceneElements::canPaintFromList()
{
    const bool isPlain = m_foreign.isEmpty() && !m_index.hasQtPainted();
    if (!isPlain)
        makeAllItems();
    return isPlain;
}

std::vector<int> SceneElements::placesOf(const std::vector<int>& elementIds)
{
    const DisplayList& list = displayList();
    std::vector<int> places;
    places.reserve(elementIds.size());
    for (int id : elementIds) {
        m_index.visitSlots(id,
            [&](int slot, const ChipElement* element) { places.push_back(element ? list.placeOf(*element) : slot); });
    }
    return places;
}

int SceneElements::outlineOf(int elementId)
{
    DisplayList& list = displayList();
    int lowest = -1;
    m_index.visitSlots(elementId, [&](int slot, const ChipElement* element) {
        const int place = element ? list.placeOf(*element) : slot;
        if (place < 0)
            return;
        const bool isRect = list.primitive(place).kind == Primitive::Rect;
        const bool isOtherRect = lowest >= 0 && list.primitive(lowest).kind == Primitive::Rect;
        if (lowest < 0 || (isRect != isOtherRect ? isRect : place < lowest))
            lowest = place;
    });
    return lowest;
}

} // namespace mirn::zelchipview
