// SPDX-License-Identifier: MIT
#include "dialogs/dcupicker.h"

#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QGraphicsItem>

namespace mirn::zelchipview {

ZELGraphicItemAttribute* dcuAmong(const QList<QGraphicsItem*>& items, const AttributeLookup& attributeOf)
{
    ZELGraphicItemAttribute* best = nullptr;
    int bestHeight = 0;
    for (const QGraphicsItem* item : items) {
        ZELGraphicItemAttribute* attribute = attributeOf(item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt());
        if (!attribute || attribute->kind != ZEL_GRAPHIC_RECT || !(item->zValue() > bestHeight))
            continue;
        best = attribute;
        bestHeight = static_cast<int>(item->zValue());
    }
    return best;
}

} // namespace mirn::zelchipview
