// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicitemattribute.h"

#include <QLineF>

namespace mirn::zelchipview {

// The drawing values of a line. Neither its colour nor its geometry changes at run time. The engine can set its
// tooltip, but not restore the drawing's.
class ZELCHIPGUI_EXPORT ZELLineAttribute final : public ZELGraphicItemAttribute
{
public:
    // The line runs from (x1, y1) to (x2, y2). Coordinates and width are in scene units; the colour is 0xRRGGBB.
    ZELLineAttribute(double x1, double y1, double x2, double y2, unsigned int strokeColor, double strokeWidth);
    ~ZELLineAttribute() override;

    // Serves ATTR_LINE, ATTR_STROKE_COLOR and ATTR_STROKE_WIDTH.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QLineF m_line;
    unsigned int m_strokeColor;
    double m_strokeWidth;
};

} // namespace mirn::zelchipview
