// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicitemattribute.h"

#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelchipview {

ZELGraphicItemAttribute::ZELGraphicItemAttribute() = default;
ZELGraphicItemAttribute::~ZELGraphicItemAttribute() = default;

void* ZELGraphicItemAttribute::getAttribute(zelgraphic_attribute_key)
{
    return nullptr;
}

void ZELGraphicItemAttribute::setAttribute(const zel_SingleGraphItem& record)
{
    itemId = record.id;
    elementName = fromEngineText(record.name);
    toolTip = fromEngineText(record.tooltip);
    layer = record.layer;
    kind = record.kind;
    flag = record.flag;
}

void ZELGraphicItemAttribute::setFillColor(const unsigned int&)
{ }

void ZELGraphicItemAttribute::setToDefaultValue(zelgraphic_attribute_key)
{ }

} // namespace mirn::zelchipview
