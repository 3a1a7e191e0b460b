// SPDX-License-Identifier: MIT
#include "graphics/zelpolygonattribute.h"

#include "platform/contract/zelgraphicrecords.h"

namespace mirn::zelchipview {

ZELPolygonAttribute::ZELPolygonAttribute(const std::vector<zel_Point>& points, unsigned int fillColor,
    unsigned int strokeColor, double strokeWidth, std::string text)
    : ZELFillableAttribute(fillColor, strokeColor, strokeWidth, text)
{
    m_points.reserve(static_cast<int>(points.size()));
    for (const zel_Point& point : points)
        m_points.append(QPointF(point.x, point.y));
}

ZELPolygonAttribute::~ZELPolygonAttribute() = default;

void* ZELPolygonAttribute::getAttribute(zelgraphic_attribute_key key)
{
    switch (key) {
    case ATTR_POINTS:
        return &m_points;
    case ATTR_FILL_COLOR:
        return &m_fillColor;
    default:
        return nullptr;
    }
}

} // namespace mirn::zelchipview
