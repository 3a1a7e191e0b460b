// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelgraphicitemattribute.h"

#include <string>

namespace mirn::zelchipview {

// The base of the rect and polygon attributes: a fill colour and a tooltip that can change at run time and be restored.
class ZELCHIPGUI_EXPORT ZELFillableAttribute : public ZELGraphicItemAttribute
{
public:
    ~ZELFillableAttribute() override = 0;

    // Copies what all kinds share. The first call also saves the record's tooltip as the default.
    void setAttribute(const zel_SingleGraphItem& record) override;
    void setFillColor(const unsigned int& color) override;

    // ATTR_FILL_COLOR restores the constructor's colour, ATTR_TOOLTIP the tooltip of the first record. Other keys do
    // nothing.
    void setToDefaultValue(zelgraphic_attribute_key key) override;

protected:
    // Colours are 0xRRGGBB, the width is in scene units, and the text, which is stored only, is 8-bit.
    ZELFillableAttribute(unsigned int fillColor, unsigned int strokeColor, double strokeWidth, const std::string& text);

    unsigned int m_fillColor; // the current colour
    unsigned int m_strokeColor; // never changes
    double m_strokeWidth; // never changes
    QString styleText; // the record's text; stored only
    int defaultsSaved = 0; // 1 once defaultToolTip is saved
    QString defaultToolTip; // from the record
    const unsigned int defaultFillColor; // from the record
};

} // namespace mirn::zelchipview
