// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicitemattribute.h"

#include <QPointF>

#include <string>
#include <vector>

struct tspan;

namespace mirn::zelchipview {

// The drawing values of a text. Its colour does not change at run time. The engine can set its tooltip, but not restore
// the drawing's.
class ZELCHIPGUI_EXPORT ZELTextAttribute final : public ZELGraphicItemAttribute
{
public:
    // `x` and `y` are the left end of the base line in scene units, `fontSize` is in scene units, `fillColor` is
    // 0xRRGGBB and `rotation` is in degrees. The spans, which are copied, and `aux1` and `aux2` are stored only.
    ZELTextAttribute(std::string text, double x, double y, double fontSize, std::string fontFamily,
        unsigned int fillColor, int rotation, std::vector<tspan>& spans, double aux1, double aux2);
    ~ZELTextAttribute() override;

    // Serves ATTR_TEXT, ATTR_POS, ATTR_ROTATION, ATTR_FONT_FAMILY, ATTR_FONT_SIZE and ATTR_FILL_COLOR.
    [[nodiscard]] void* getAttribute(zelgraphic_attribute_key key) override;

private:
    QString m_text;
    QPointF m_pos;
    double m_fontSize;
    QString m_fontFamily;
    unsigned int m_fillColor;
    int m_rotation;
    std::vector<tspan> m_spans;
    [[maybe_unused]] double auxValue1;
    [[maybe_unused]] double auxValue2;
};

} // namespace mirn::zelchipview
