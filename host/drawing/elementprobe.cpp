// SPDX-License-Identifier: MIT
#include "host/drawing/elementprobe.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QCoreApplication>
#include <QGraphicsItem>

namespace mirn::zelchip {

using zelchipview::ZELChipViewDatabase;
using zelchipview::ZELGraphicItemAttribute;

namespace {

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
    const int loadNumber = item->data(zelchipview::ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
    return ZELChipViewDatabase::getInstance()->getGraphicItemAttribute(loadNumber);
}

QString describeElement(const ZELGraphicItemAttribute& element)
{
    QString text = element.toolTip.trimmed().section(QLatin1Char('\n'), 0, 0).trimmed();
    if (text.isEmpty())
        text = element.elementName.isEmpty() ? kindName(element.kind) : element.elementName;
    return element.itemId < 0 ? text : QStringLiteral("%1  (id %2)").arg(text, QString::number(element.itemId));
}

} // namespace mirn::zelchip
