// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelfillableattribute.h"

#include <QPolygonF>

#include <vector>

struct zel_Point;

namespace mirn::zelchipview {

// The values of a polygon. Its stroke is kept but not served: polygons are drawn without a border.
class ZELCHIPGUI_EXPORT ZELPolygonAttribute final : public ZELFillableAttribute
{
public:
    // Corners and width in scene units, colours as 0xRRGGBB.
    ZELPolygonAttribute(const std::vector<zel_Point>& points, unsigned int fillColor, unsigned int strokeColor,
        double strokeWidth, std::string text);
    ~ZELPolygonAttribute() override;

    // Serves ATTR_POINTS and ATTR_FILL_COLOR.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QPolygonF m_points;
};

} // namespace mirn::zelchipview
