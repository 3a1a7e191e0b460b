// SPDX-License-Identifier: MIT
#include "graphics/elements/paintrules.h"

#include "graphics/zelconstants.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace mirn::zelchipview::paintrules {

namespace {

// Stroke widths below this draw no border.
constexpr double NoStrokeWidth = 1e-16;
constexpr double LargestWidth = 32767.0; // the largest width that QPen accepts

QRgb opaque(unsigned int rgb)
{
    return 0xff000000U | rgb;
}

constexpr QRgb NoBorder = qRgba(255, 0, 0, 0); // polygons have no border unless they are selected

// Converted once, because they are asked for at each element of each picture.
const QRgb NoRectBorder = RECT_BORDER_COLOR.rgba();
const QRgb SelectedBorder = SELECTED_COLOR.rgba();
const QRgb SelectedFill = SELECTED_FILL_COLOR.rgba();
const QRgb FilteredBorder = FILTERCOLOR.rgba();
const QRgb FilteredFill = FILTER_FILL_COLOR.rgba();
const QRgb HighlightedFill = HIGHLIGHT_COLOR.rgba();

// A drawing has few pens for many elements. The last ones are cached, so that elements share their data.
QPen sharedPen(QRgb color, double width)
{
    struct Entry
    {
        QRgb color;
        double width;
        QPen pen;
    };
    constexpr std::size_t Most = 8;
    static std::vector<Entry> entries;
    const auto known = std::find_if(
        entries.begin(), entries.end(), [=](const Entry& e) { return e.color == color && e.width == width; });
    if (known != entries.end())
        return known->pen;
    QPen pen(QColor::fromRgba(color));
    pen.setWidthF(width);
    if (entries.size() == Most)
        entries.erase(entries.begin());
    entries.push_back({color, width, pen});
    return pen;
}

} // namespace

QColor colorOf(unsigned int rgb)
{
    return QColor((rgb >> 16) & 0xff, (rgb >> 8) & 0xff, rgb & 0xff, 255);
}

int lineWidth(double strokeWidth)
{
    return strokeWidth > 0 ? static_cast<int>(std::min(strokeWidth, LargestWidth)) : 0;
}

QPen linePen(unsigned int strokeColor, double strokeWidth)
{
    return sharedPen(opaque(strokeColor), lineWidth(strokeWidth));
}

Look rectLook(unsigned int fillColor, unsigned int strokeColor, double strokeWidth, ElementStates states)
{
    Look look{NoRectBorder, 0.0, opaque(fillColor)};
    if (states.testFlag(ElementState::Selected)) {
        look.border = SelectedBorder;
        look.fill = SelectedFill;
    } else if (std::abs(strokeWidth) >= NoStrokeWidth) {
        look.border = opaque(strokeColor);
        look.borderWidth = std::clamp(strokeWidth, 0.0, LargestWidth);
    }
    if (states.testFlag(ElementState::Filtered)) {
        look.border = FilteredBorder;
        look.fill = FilteredFill;
    }
    if (states.testFlag(ElementState::Highlighted))
        look.fill = HighlightedFill;
    return look;
}

Look polygonLook(unsigned int fillColor, ElementStates states)
{
    Look look{NoBorder, 0.0, opaque(fillColor)};
    if (states.testFlag(ElementState::Selected)) {
        look.border = SelectedBorder;
        look.fill = SelectedFill;
    }
    if (states.testFlag(ElementState::Highlighted))
        look.fill = HighlightedFill;
    return look;
}

QPen borderPen(const Look& look)
{
    return sharedPen(look.border, look.borderWidth);
}

QBrush fillBrush(const Look& look)
{
    return QBrush(QColor::fromRgba(look.fill));
}

int textPixelSize(double fontSize)
{
    constexpr double LargestPixelSize = 1e5;
    const double pixels = fontSize > 0 ? std::min(TextRenderScale * fontSize, LargestPixelSize) : 0.0;
    return std::max(1, static_cast<int>(pixels));
}

QFont textFont(const QString& family, double fontSize)
{
    QFont font(family, -1, -1, false);
    font.setPixelSize(textPixelSize(fontSize));
    font.setStyleHint(QFont::SansSerif, QFont::PreferDefault);
    return font;
}

} // namespace mirn::zelchipview::paintrules
