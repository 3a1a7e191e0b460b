// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelfillableattribute.h"

#include <QRectF>

namespace mirn::zelchipview {

// The values of a rect, the kind that chip sites are made of.
class ZELCHIPGUI_EXPORT ZELRectAttribute final : public ZELFillableAttribute
{
public:
    // Upper left corner, size and width in scene units, colours as 0xRRGGBB.
    ZELRectAttribute(double x, double y, double width, double height, unsigned int fillColor, unsigned int strokeColor,
        double strokeWidth, std::string text);
    ~ZELRectAttribute() override;

    // Serves ATTR_RECT, ATTR_FILL_COLOR, ATTR_STROKE_COLOR and ATTR_STROKE_WIDTH.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QRectF m_rect;
};

} // namespace mirn::zelchipview
