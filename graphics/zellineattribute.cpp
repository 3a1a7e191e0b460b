// SPDX-License-Identifier: MIT
#include "graphics/zellineattribute.h"

namespace mirn::zelchipview {

ZELLineAttribute::ZELLineAttribute(
    double x1, double y1, double x2, double y2, unsigned int strokeColor, double strokeWidth)
    : m_line(x1, y1, x2, y2)
    , m_strokeColor(strokeColor)
    , m_strokeWidth(strokeWidth)
{ }

ZELLineAttribute::~ZELLineAttribute() = default;

void* ZELLineAttribute::getAttribute(zelgraphic_attribute_key key)
{
    switch (key) {
    case ATTR_LINE:
        return &m_line;
    case ATTR_STROKE_COLOR:
        return &m_strokeColor;
    case ATTR_STROKE_WIDTH:
        return &m_strokeWidth;
    default:
        return nullptr;
    }
}

} // namespace mirn::zelchipview
