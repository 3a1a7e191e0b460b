// SPDX-License-Identifier: MIT
#include "planning/siteareas.h"

#include "graphics/elements/chipelement.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"

#include <QGraphicsItem>

#include <algorithm>

namespace mirn::zelchipview {

SiteAreas::SiteAreas(ZelGraphicsScene& scene)
    : m_scene(scene)
{ }

QRectF SiteAreas::areaOf(int elementId)
{
    const auto known = m_areas.constFind(elementId);
    if (known != m_areas.constEnd())
        return *known;
    const QList<QGraphicsItem*> items = m_scene.itemsOf(elementId);
    const auto isBefore = [](const QGraphicsItem* a, const QGraphicsItem* b) {
        const bool isRect = a->type() == QGraphicsRectItem::Type;
        const bool isOtherRect = b->type() == QGraphicsRectItem::Type;
        return isRect != isOtherRect ? isRect : a->zValue() < b->zValue();
    };
    const auto lowest = std::min_element(items.begin(), items.end(), isBefore);
    const QRectF area = lowest != items.end() ? (*lowest)->sceneBoundingRect() : QRectF();
    m_areas.insert(elementId, area);
    return area;
}

int siteAt(ZelGraphicsView& view, QPoint position)
{
    const QList<QGraphicsItem*> items = view.items(position); // topmost first
    for (const QGraphicsItem* item : items) {
        const auto* element
            = item->type() == QGraphicsRectItem::Type ? dynamic_cast<const ChipElement*>(item) : nullptr;
        const ZELGraphicItemAttribute* attribute = element ? element->attribute() : nullptr;
        // Elements of hidden layers are in the scene as well.
        if (attribute && attribute->itemId >= 0 && view.getVisibleLayers().contains(attribute->layer))
            return attribute->itemId;
    }
    return -1;
}

} // namespace mirn::zelchipview
