// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicitemattribute.h"

#include <string>

namespace mirn::zelchipview {

// What rect and polygon share: a fill colour and a tooltip that can change at run time and be put back.
class ZELCHIPGUI_EXPORT ZELFillableAttribute : public ZELGraphicItemAttribute
{
public:
    ~ZELFillableAttribute() override = 0;

    // Also keeps the record's tooltip as the default, at the first call only.
    void setAttribute(const zel_SingleGraphItem& record) override;
    void setFillColor(const unsigned int& color) override;

    // ATTR_FILL_COLOR goes back to the constructor's colour, ATTR_TOOLTIP to the first record's.
    void setToDefaultValue(zelgraphic_attribute_key key) override;

protected:
    // Colours as 0xRRGGBB, the width in scene units, the text 8-bit.
    ZELFillableAttribute(unsigned int fillColor, unsigned int strokeColor, double strokeWidth, const std::string& text);

    unsigned int m_fillColor; // what is shown now
    unsigned int m_strokeColor; // never changes
    double m_strokeWidth; // never changes
    QString styleText; // the record's further text; kept, not read
    int defaultsSaved = 0; // 1 once the record's tooltip is kept
    QString defaultToolTip; // the record's
    const unsigned int defaultFillColor; // the record's
};

} // namespace mirn::zelchipview
