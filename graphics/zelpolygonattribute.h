// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelfillableattribute.h"

#include <QPolygonF>

#include <vector>

struct zel_Point;

namespace mirn::zelchipview {

// The drawing values of a polygon. The stroke is stored but not served, because polygons are drawn without a border.
class ZELCHIPGUI_EXPORT ZELPolygonAttribute final : public ZELFillableAttribute
{
public:
    // Corners and width are in scene units; colours are 0xRRGGBB. The text is stored only.
    ZELPolygonAttribute(const std::vector<zel_Point>& points, unsigned int fillColor, unsigned int strokeColor,
        double strokeWidth, std::string text);
    ~ZELPolygonAttribute() override;

    // Serves ATTR_POINTS and ATTR_FILL_COLOR.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QPolygonF m_points;
};

} // namespace mirn::zelchipview
