// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelfillableattribute.h"

#include <QRectF>

namespace mirn::zelchipview {

// The drawing values of a rect, the kind of element that chip sites are drawn as.
class ZELCHIPGUI_EXPORT ZELRectAttribute final : public ZELFillableAttribute
{
public:
    // The top left corner, the size and the stroke width are in scene units; colours are 0xRRGGBB. The text is stored
    // only.
    ZELRectAttribute(double x, double y, double width, double height, unsigned int fillColor, unsigned int strokeColor,
        double strokeWidth, std::string text);
    ~ZELRectAttribute() override;

    // Serves ATTR_RECT, ATTR_FILL_COLOR, ATTR_STROKE_COLOR and ATTR_STROKE_WIDTH.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QRectF m_rect;
};

} // namespace mirn::zelchipview
