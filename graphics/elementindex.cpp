// SPDX-License-Identifier: MIT
#include "graphics/elementindex.h"

#include "graphics/chipelement.h"

namespace mirn::zelchipview {

void ElementIndex::add(ChipElement* element)
{
    const ZELGraphicItemAttribute* attribute = element->attribute();
    if (!attribute || m_idOf.contains(element))
        return;
    m_byId.insert(attribute->itemId, element);
    m_idOf.insert(element, attribute->itemId);
    m_pendingByLayer[attribute->layer].insert(element);
}

void ElementIndex::remove(ChipElement* element)
{
    const auto known = m_idOf.constFind(element);
    if (known == m_idOf.constEnd())
        return;
    m_byId.remove(known.value(), element);
    m_idOf.erase(known);
    for (QSet<ChipElement*>& pending : m_pendingByLayer)
        pending.remove(element);
}

QList<ChipElement*> ElementIndex::elements(int elementId) const
{
    return m_byId.values(elementId);
}

std::vector<ChipElement*> ElementIndex::takePending(const QList<int>& layers)
{
    std::vector<ChipElement*> taken;
    for (int layer : layers) {
        const QSet<ChipElement*> pending = m_pendingByLayer.take(layer);
        taken.insert(taken.end(), pending.begin(), pending.end());
    }
    return taken;
}

} // namespace mirn::zelchipview
