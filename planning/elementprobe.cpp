// SPDX-License-Identifier: MIT
#include "planning/elementprobe.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/sceneelements.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QCoreApplication>
#include <QGraphicsItem>

namespace mirn::zelchipview {

namespace {

// Areas rank before lines, lines before texts.
int rankOf(Primitive::Kind kind)
{
    if (kind == Primitive::Text)
        return 2;
    return kind == Primitive::Line ? 1 : 0;
}

int rankOf(int kind)
{
    switch (kind) {
    case ZEL_GRAPHIC_RECT:
    case ZEL_GRAPHIC_POLYGON:
        return 0;
    case ZEL_GRAPHIC_LINE:
        return 1;
    default:
        return 2;
    }
}

QString kindName(int kind)
{
    switch (kind) {
    case ZEL_GRAPHIC_RECT:
        return QCoreApplication::translate("ElementProbe", "Rectangle");
    case ZEL_GRAPHIC_POLYGON:
        return QCoreApplication::translate("ElementProbe", "Polygon");
    case ZEL_GRAPHIC_LINE:
        return QCoreApplication::translate("ElementProbe", "Line");
    default:
        return QCoreApplication::translate("ElementProbe", "Text");
    }
}

} // namespace

const ZELGraphicItemAttribute* attributeOf(const QGraphicsItem* item)
{
    const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
    return ZELChipViewDatabase::getInstance()->getGraphicItemAttribute(loadNumber);
}

namespace {

// Asks Qt, whatever a host has put into the scene or done to it.
const ZELGraphicItemAttribute* elementAmongItems(ZelGraphicsView& view, QPoint position)
{
    const ZELGraphicItemAttribute* best = nullptr;
    const QList<QGraphicsItem*> items = view.items(position); // topmost first
    for (const QGraphicsItem* item : items) {
        const ZELGraphicItemAttribute* attribute = attributeOf(item);
        // Elements of hidden layers are still in the scene and are found as well.
        if (!attribute || !view.getVisibleLayers().contains(attribute->layer))
            continue;
        if (!best || rankOf(attribute->kind) < rankOf(best->kind))
            best = attribute;
    }
    return best;
}

} // namespace

// A pixel may show dozens of elements of a large drawing, so no item is made for looking at them.
const ZELGraphicItemAttribute* elementAt(ZelGraphicsView& view, QPoint position)
{
    auto* scene = qobject_cast<ZelGraphicsScene*>(view.scene());
    const QRectF pixel = view.mapToScene(QRect(position, QSize(1, 1))).boundingRect();
    const bool isUpright = view.transform().type() <= QTransform::TxScale;
    if (!scene || !isUpright || !scene->elements().isPlain()) {
        if (scene)
            scene->makeItemsIn(pixel);
        return elementAmongItems(view, position);
    }
    const QList<int>& layers = view.getVisibleLayers();
    for (const int rank : {0, 1, 2}) {
        const auto isWanted = [&layers, rank](Primitive::Kind kind, int layer) {
            return rankOf(kind) == rank && layers.contains(layer);
        };
        if (const ZELGraphicItemAttribute* found = scene->elements().topmostTouching(pixel, isWanted))
            return found;
    }
    return nullptr;
}

QString describeElement(const ZELGraphicItemAttribute& element)
{
    QString text = element.toolTip.trimmed().section(QLatin1Char('\n'), 0, 0).trimmed();
    if (text.isEmpty())
        text = element.elementName.isEmpty() ? kindName(element.kind) : element.elementName;
    return element.itemId < 0 ? text : QStringLiteral("%1  (id %2)").arg(text, QString::number(element.itemId));
}

} // namespace mirn::zelchipview
