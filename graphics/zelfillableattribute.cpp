// SPDX-License-Identifier: MIT
#include "graphics/zelfillableattribute.h"

#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelchipview {

ZELFillableAttribute::ZELFillableAttribute(
    unsigned int fillColor, unsigned int strokeColor, double strokeWidth, const std::string& text)
    : m_fillColor(fillColor)
    , m_strokeColor(strokeColor)
    , m_strokeWidth(strokeWidth)
    , styleText(fromEngineText(text))
    , defaultFillColor(fillColor)
{ }

ZELFillableAttribute::~ZELFillableAttribute() = default;

void ZELFillableAttribute::setAttribute(const zel_SingleGraphItem& record)
{
    if (defaultsSaved == 0) {
        defaultToolTip = fromEngineText(record.tooltip);
        defaultsSaved = 1;
    }
    ZELGraphicItemAttribute::setAttribute(record);
}

void ZELFillableAttribute::setFillColor(const unsigned int& color)
{
    m_fillColor = color;
}

void ZELFillableAttribute::setToDefaultValue(zelgraphic_attribute_key key)
{
    if (key == ATTR_FILL_COLOR)
        m_fillColor = defaultFillColor;
    else if (key == ATTR_TOOLTIP)
        toolTip = defaultToolTip;
}

} // namespace mirn::zelchipview
