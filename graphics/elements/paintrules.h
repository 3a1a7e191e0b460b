// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

namespace mirn::zelchipview {

// What marks an element beyond its own look.
enum class ElementState {
    Selected = 1,
    Filtered = 2, // only while the filter is enabled
    Highlighted = 4, // a probable placement site
};
Q_DECLARE_FLAGS(ElementStates, ElementState)
Q_DECLARE_OPERATORS_FOR_FLAGS(ElementStates)

// How elements look: from attribute values and state to pens, brushes and fonts, and nothing else. Colours come in
// packed as 0xRRGGBB, widths and font sizes in scene units. A pen of width 0 is one device pixel wide at any zoom.
namespace paintrules {

// The factor between the font that a text is drawn with and its size in the scene: texts are rendered at five times
// their size and scaled down, which keeps small labels sharp.
constexpr double TextRenderScale = 5.0;
constexpr double TextItemScale = 1.0 / TextRenderScale;

// Opaque; bits above 23 are ignored.
[[nodiscard]] QColor colorOf(unsigned int rgb);

// A line looks the same in every state. The width is cut to whole units.
[[nodiscard]] int lineWidth(double strokeWidth);
[[nodiscard]] QPen linePen(unsigned int strokeColor, double strokeWidth);

// A border and a fill. Colours have an alpha channel; a border without alpha is not seen.
struct Look
{
    QRgb border; // colour
    double borderWidth; // scene units, 0 to 32767
    QRgb fill; // colour
};

// The border of a filtered rect wins over a selected one's; for the fill, highlight wins over filter over selection.
[[nodiscard]] Look rectLook(unsigned int fillColor, unsigned int strokeColor, double strokeWidth, ElementStates states);

// A polygon shows no border of its own and no filter.
[[nodiscard]] Look polygonLook(unsigned int fillColor, ElementStates states);

// The same for QPainter.
[[nodiscard]] QPen borderPen(const Look& look);
[[nodiscard]] QBrush fillBrush(const Look& look);

// Texts look the same in every state. The font's size is at least a pixel; what it leaves open is the painter's.
[[nodiscard]] int textPixelSize(double fontSize);
[[nodiscard]] QFont textFont(const QString& family, double fontSize);

} // namespace paintrules
} // namespace mirn::zelchipview
