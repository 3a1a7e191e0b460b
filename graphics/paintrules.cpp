// SPDX-License-Identifier: MIT
#include "graphics/paintrules.h"

#include "graphics/zelconstants.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview::paintrules {

namespace {

// Stroke widths below this are no border at all.
constexpr double NoStrokeWidth = 1e-16;
constexpr double LargestWidth = 32767.0; // QPen takes no more

QPen hairline(const QColor& color)
{
    QPen pen(color);
    pen.setWidth(0);
    return pen;
}

} // namespace

QColor colorOf(unsigned int rgb)
{
    return QColor((rgb >> 16) & 0xff, (rgb >> 8) & 0xff, rgb & 0xff, 255);
}

QPen linePen(unsigned int strokeColor, double strokeWidth)
{
    QPen pen(colorOf(strokeColor));
    pen.setWidth(strokeWidth > 0 ? static_cast<int>(std::min(strokeWidth, LargestWidth)) : 0);
    return pen;
}

QPen rectPen(unsigned int strokeColor, double strokeWidth, ElementStates states)
{
    QPen pen;
    if (states.testFlag(ElementState::Selected)) {
        pen = hairline(SELECTED_COLOR);
    } else if (!(std::abs(strokeWidth) >= NoStrokeWidth)) {
        pen = hairline(RECT_BORDER_COLOR);
    } else {
        pen.setColor(colorOf(strokeColor));
        pen.setWidthF(std::clamp(strokeWidth, 0.0, LargestWidth));
    }
    if (states.testFlag(ElementState::Filtered))
        pen.setColor(FILTERCOLOR);
    return pen;
}

QBrush rectBrush(unsigned int fillColor, ElementStates states)
{
    if (states.testFlag(ElementState::Highlighted))
        return QBrush(HIGHLIGHT_COLOR);
    if (states.testFlag(ElementState::Filtered))
        return QBrush(FILTER_FILL_COLOR);
    if (states.testFlag(ElementState::Selected))
        return QBrush(SELECTED_FILL_COLOR);
    return QBrush(colorOf(fillColor));
}

QPen polygonPen(ElementStates states)
{
    return hairline(states.testFlag(ElementState::Selected) ? SELECTED_COLOR : QColor(255, 0, 0, 0));
}

QBrush polygonBrush(unsigned int fillColor, ElementStates states)
{
    if (states.testFlag(ElementState::Highlighted))
        return QBrush(HIGHLIGHT_COLOR);
    if (states.testFlag(ElementState::Selected))
        return QBrush(SELECTED_FILL_COLOR);
    return QBrush(colorOf(fillColor));
}

QFont textFont(const QString& family, double fontSize)
{
    constexpr double LargestPixelSize = 1e5;
    const double pixels = fontSize > 0 ? std::min(TextRenderScale * fontSize, LargestPixelSize) : 0.0;
    QFont font(family, -1, -1, false);
    font.setPixelSize(std::max(1, static_cast<int>(pixels)));
    font.setStyleHint(QFont::SansSerif, QFont::PreferDefault);
    return font;
}

} // namespace mirn::zelchipview::paintrules
