// SPDX-License-Identifier: MIT
#include "planning/drawnelement.h"

#include "graphics/elements/chipelement.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QGraphicsItem>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// Areas rank before lines, lines before texts.
int rankOf(const ZELGraphicItemAttribute& element)
{
    switch (element.kind) {
    case ZEL_GRAPHIC_RECT:
    case ZEL_GRAPHIC_POLYGON:
        return 0;
    case ZEL_GRAPHIC_LINE:
        return 1;
    default:
        return 2;
    }
}

bool isBelow(const QGraphicsItem* item, const QGraphicsItem* other)
{
    const bool isRect = item->type() == QGraphicsRectItem::Type;
    const bool isOtherRect = other->type() == QGraphicsRectItem::Type;
    return isRect != isOtherRect ? isRect : item->zValue() < other->zValue();
}

} // namespace

const ZELGraphicItemAttribute* elementUnder(const ZelGraphicsView& view, QPoint position)
{
    auto* scene = qobject_cast<ZelGraphicsScene*>(view.scene());
    const ZELGraphicItemAttribute* best = nullptr;
    const QList<QGraphicsItem*> items = scene ? view.items(position) : QList<QGraphicsItem*>(); // topmost first
    for (const QGraphicsItem* item : items) {
        // The controller would take an attribute that it returns for one that the host may change.
        const auto* element = dynamic_cast<const ChipElement*>(item);
        const ZELGraphicItemAttribute* attribute = element ? element->attribute() : nullptr;
        // Elements of hidden layers are still in the scene and are found as well.
        if (!attribute || !scene->isLayerVisible(attribute->layer))
            continue;
        if (!best || rankOf(*attribute) < rankOf(*best))
            best = attribute;
    }
    return best;
}

QGraphicsItem* outlineOf(ZelGraphicsScene& scene, int id)
{
    const QList<QGraphicsItem*> items = scene.itemsOf(id);
    const auto lowest = std::min_element(items.begin(), items.end(), isBelow);
    return lowest != items.end() ? *lowest : nullptr;
}

} // namespace mirn::zelchipview
