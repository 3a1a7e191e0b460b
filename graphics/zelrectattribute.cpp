// SPDX-License-Identifier: MIT
#include "graphics/zelrectattribute.h"

namespace mirn::zelchipview {

ZELRectAttribute::ZELRectAttribute(double x, double y, double width, double height, unsigned int fillColor,
    unsigned int strokeColor, double strokeWidth, std::string text)
    : ZELFillableAttribute(fillColor, strokeColor, strokeWidth, text)
    , m_rect(x, y, width, height)
{ }

ZELRectAttribute::~ZELRectAttribute() = default;

void* ZELRectAttribute::getAttribute(zelgraphic_attribute_key key)
{
    switch (key) {
    case ATTR_RECT:
        return &m_rect;
    case ATTR_FILL_COLOR:
        return &m_fillColor;
    case ATTR_STROKE_COLOR:
        return &m_strokeColor;
    case ATTR_STROKE_WIDTH:
        return &m_strokeWidth;
    default:
        return nullptr;
    }
}

} // namespace mirn::zelchipview
