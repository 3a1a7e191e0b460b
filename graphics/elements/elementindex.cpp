// SPDX-License-Identifier: MIT
#include "graphics/elements/elementindex.h"

#include "graphics/elements/chipelement.h"

#include <QGraphicsItem>

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirn::zelchipview {

namespace {

// The flags that affect painting.
constexpr QGraphicsItem::GraphicsItemFlags PaintingFlags
    = QGraphicsItem::ItemClipsToShape | QGraphicsItem::ItemIgnoresTransformations | QGraphicsItem::ItemHasNoContents;

// Texts stand at their position; the geometry of all other kinds contains their place.
bool isMoved(ChipElement& element)
{
    const QGraphicsItem& item = *element.graphicsItem();
    if (element.kind() != ZEL_GRAPHIC_TEXT)
        return !item.pos().isNull() || item.scale() != 1.0;
    return item.pos() != element.value<QPointF>(ATTR_POS) || item.scale() != paintrules::TextItemScale;
}

// Returns true if the item differs from what the loader made, so that only Qt can paint it.
bool needsQtPainting(ChipElement& element)
{
    const QGraphicsItem& item = *element.graphicsItem();
    return !item.isVisible() || item.opacity() != 1.0 || item.parentItem() || !item.childItems().isEmpty()
        || (item.flags() & PaintingFlags) || item.isSelected() || item.rotation() != 0.0
        || !item.transform().isIdentity() || item.graphicsEffect() || isMoved(element);
}

} // namespace

void ElementIndex::add(ChipElement* element)
{
    const ZELGraphicItemAttribute* attribute = element->attribute();
    if (!attribute || element->m_slot != ChipElement::Nowhere)
        return;
    const bool wasLatent = m_making != ChipElement::Nowhere;
    takeSlot(element, attribute->itemId);
    if (hasFewItems() || !attribute->toolTip.isEmpty())
        element->m_isPending = true;
    if (element->m_isPending)
        m_pendingByLayer[attribute->layer].push_back(element->m_slot);
    if (attribute->m_isHandedOut)
        watch(element);
    updateQtPainting(element);
    if (wasLatent)
        return; // it was counted, and its place in the paint order is known
    m_textCount += element->kind() == ZEL_GRAPHIC_TEXT ? 1 : 0;
    zValueChanged(element);
}

void ElementIndex::takeSlot(ChipElement* element, int elementId)
{
    if (m_making == ChipElement::Nowhere) {
        element->m_slot = static_cast<Slot>(m_elements.size());
        m_elements.push_back(element);
        m_byId.emplace_back(elementId, element->m_slot);
    } else {
        element->m_slot = std::exchange(m_making, ChipElement::Nowhere);
        m_elements[element->m_slot] = element;
        m_isLatent[static_cast<std::size_t>(element->m_slot)] = false;
        --m_latentCount;
    }
    if (!m_isLatent.empty())
        m_takenSlots.push_back(element->m_slot);
}

void ElementIndex::beginLatent(std::size_t count)
{
    m_elements.reserve(count);
    m_byId.reserve(count);
    m_isLatent.reserve(count);
    m_shownLayers.clear();
}

void ElementIndex::addLatent(int elementId, bool isText)
{
    m_byId.emplace_back(elementId, static_cast<Slot>(m_elements.size()));
    m_elements.push_back(nullptr);
    m_isLatent.push_back(true);
    m_textCount += isText ? 1 : 0;
    m_highestZ = static_cast<double>(++m_latentCount);
    ++m_version;
}

ChipElement* ElementIndex::finishMaking(int slot)
{
    if (std::exchange(m_making, ChipElement::Nowhere) == slot) {
        m_isLatent[static_cast<std::size_t>(slot)] = false;
        --m_latentCount;
        ++m_gaps;
    }
    return m_elements[slot];
}

void ElementIndex::dropLatent()
{
    const unsigned version = m_version;
    *this = ElementIndex();
    m_version = version + 1;
}

void ElementIndex::settle(ChipElement* element)
{
    element->m_isPending = false;
}

void ElementIndex::remove(ChipElement* element)
{
    if (element->m_slot == ChipElement::Nowhere)
        return;
    m_elements[element->m_slot] = nullptr;
    m_textCount -= element->kind() == ZEL_GRAPHIC_TEXT ? 1 : 0;
    element->m_slot = ChipElement::Nowhere;
    element->m_place = ChipElement::Nowhere;
    m_qtPainted.remove(element);
    ++m_gaps;
    ++m_version;
    if (m_gaps > m_elements.size() / 2 && !hasLatent())
        closeGaps();
}

void ElementIndex::updateQtPainting(ChipElement* element)
{
    if (element->m_slot == ChipElement::Nowhere)
        return;
    if (!needsQtPainting(*element))
        m_qtPainted.remove(element);
    else
        m_qtPainted.insert(element);
}

void ElementIndex::watch(int loadNumber, int elementId)
{
    visit(elementId, [=](ChipElement* element) {
        if (element->loadNumber() == loadNumber)
            watch(element);
    });
}

void ElementIndex::watch(ChipElement* element)
{
    // An item that is made because its attribute was handed out comes here twice.
    if (m_watched.empty() || m_watched.back() != element->m_slot)
        m_watched.push_back(element->m_slot);
}

std::vector<ChipElement*> ElementIndex::watched() const
{
    std::vector<ChipElement*> elements;
    for (Slot slot : m_watched) {
        if (m_elements[slot])
            elements.push_back(m_elements[slot]);
    }
    return elements;
}

void ElementIndex::renumber(ChipElement* element, int previousId)
{
    sortById();
    const std::pair<int, Slot> before(previousId, element->m_slot);
    const std::pair<int, Slot> now(element->attribute()->itemId, element->m_slot);
    const auto entry = std::lower_bound(m_byId.begin(), m_byId.end(), before);
    if (entry != m_byId.end() && *entry == before)
        m_byId.erase(entry);
    m_byId.insert(std::lower_bound(m_byId.begin(), m_byId.end(), now), now);
    m_sortedById = m_byId.size();
}

void ElementIndex::markPending(ChipElement* element)
{
    if (std::exchange(element->m_isPending, true))
        return;
    m_pendingByLayer[element->attribute()->layer].push_back(element->m_slot);
}

void ElementIndex::changeLayer(ChipElement* element)
{
    if (element->m_isPending)
        m_pendingByLayer[element->attribute()->layer].push_back(element->m_slot);
}

// The z value decides the place in the paint order, so the order may have to be sorted anew.
void ElementIndex::zValueChanged(ChipElement* element)
{
    if (element->m_slot == ChipElement::Nowhere)
        return;
    const double z = element->graphicsItem()->zValue();
    const bool isLast = element->m_slot == static_cast<Slot>(m_elements.size()) - 1;
    const bool isFirst = m_elements.size() == 1;
    m_isInPaintOrder = isFirst || (m_isInPaintOrder && isLast && z >= m_highestZ);
    m_highestZ = isFirst ? z : std::max(m_highestZ, z);
    ++m_version;
}

std::vector<ChipElement*> ElementIndex::elements(int elementId)
{
    std::vector<ChipElement*> found;
    visit(elementId, [&found](ChipElement* element) { found.push_back(element); });
    return found;
}

void ElementIndex::sortById()
{
    if (m_sortedById == m_byId.size())
        return;
    if (!std::is_sorted(m_byId.begin(), m_byId.end()))
        std::sort(m_byId.begin(), m_byId.end());
    m_sortedById = m_byId.size();
}

std::vector<ChipElement*> ElementIndex::takePending(const QList<int>& layers)
{
    std::vector<ChipElement*> taken;
    for (int layer : layers) {
        if (hasLatent())
            m_shownLayers.insert(layer);
        const auto pending = m_pendingByLayer.find(layer);
        if (pending == m_pendingByLayer.end())
            continue;
        for (Slot slot : pending->second) {
            ChipElement* element = m_elements[slot];
            if (!element || !element->m_isPending)
                continue;
            const int layerNow = element->attribute()->layer; // a host may have changed it since
            if (layerNow != layer) {
                m_pendingByLayer[layerNow].push_back(slot);
                continue;
            }
            element->m_isPending = false;
            taken.push_back(element);
        }
        m_pendingByLayer.erase(pending);
    }
    return taken;
}

std::vector<ChipElement*> ElementIndex::inPaintOrder() const
{
    std::vector<ChipElement*> ordered;
    if (hasLatent()) {
        std::vector<Slot> slots = m_takenSlots;
        std::sort(slots.begin(), slots.end());
        for (Slot slot : slots)
            ordered.push_back(m_elements[slot]);
    } else {
        ordered = m_elements;
    }
    ordered.erase(std::remove(ordered.begin(), ordered.end(), nullptr), ordered.end());
    if (!m_isInPaintOrder) {
        std::stable_sort(ordered.begin(), ordered.end(),
            [](auto* a, auto* b) { return a->graphicsItem()->zValue() < b->graphicsItem()->zValue(); });
    }
    return ordered;
}

// This may read nothing but the lists: attributes may be deleted before their elements.
void ElementIndex::closeGaps()
{
    std::vector<Slot> moved(m_elements.size(), ChipElement::Nowhere);
    Slot next = 0;
    for (std::size_t slot = 0; slot < moved.size(); ++slot) {
        ChipElement* element = m_elements[slot];
        if (!element)
            continue;
        moved[slot] = element->m_slot = next;
        m_elements[next++] = element;
    }
    m_elements.resize(next);
    m_gaps = 0;

    const auto isGone = [&moved](Slot slot) { return moved[slot] == ChipElement::Nowhere; };
    const auto entryIsGone = [&](const auto& entry) { return isGone(entry.second); };
    m_byId.erase(std::remove_if(m_byId.begin(), m_byId.end(), entryIsGone), m_byId.end());
    for (auto& entry : m_byId)
        entry.second = moved[entry.second];
    m_sortedById = std::is_sorted(m_byId.begin(), m_byId.end()) ? m_byId.size() : 0;
    const auto closeGapsIn = [&](std::vector<Slot>& slots) {
        slots.erase(std::remove_if(slots.begin(), slots.end(), isGone), slots.end());
        for (Slot& slot : slots)
            slot = moved[slot];
    };
    closeGapsIn(m_watched);
    for (auto& [layer, pending] : m_pendingByLayer)
        closeGapsIn(pending);
    if (m_elements.empty())
        m_isInPaintOrder = true;
}

} // namespace mirn::zelchipview
