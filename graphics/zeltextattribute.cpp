// SPDX-License-Identifier: MIT
#include "graphics/zeltextattribute.h"

#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelchipview {

ZELTextAttribute::ZELTextAttribute(std::string text, double x, double y, double fontSize, std::string fontFamily,
    unsigned int fillColor, int rotation, std::vector<tspan>& spans, double aux1, double aux2)
    : m_text(fromEngineText(text))
    , m_pos(x, y)
    , m_fontSize(fontSize)
    , m_fontFamily(fromEngineText(fontFamily))
    , m_fillColor(fillColor)
    , m_rotation(rotation)
    , m_spans(spans)
    , auxValue1(aux1)
    , auxValue2(aux2)
{ }

ZELTextAttribute::~ZELTextAttribute() = default;

void* ZELTextAttribute::getAttribute(zelgraphic_attribute_key key)
{
    switch (key) {
    case ATTR_TEXT:
        return &m_text;
    case ATTR_POS:
        return &m_pos;
    case ATTR_ROTATION:
        return &m_rotation;
    case ATTR_FONT_FAMILY:
        return &m_fontFamily;
    case ATTR_FONT_SIZE:
        return &m_fontSize;
    case ATTR_FILL_COLOR:
        return &m_fillColor;
    default:
        return nullptr;
    }
}

} // namespace mirn::zelchipview
