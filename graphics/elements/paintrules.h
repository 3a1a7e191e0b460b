// SPDX-License-Identifier: MIT
#pragma once

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QPen>

namespace mirn::zelchipview {

// States that change how an element looks.
enum class ElementState {
    Selected = 1,
    Filtered = 2, // only while the filter is enabled
    Highlighted = 4, // a probable placement site
};
Q_DECLARE_FLAGS(ElementStates, ElementState)
Q_DECLARE_OPERATORS_FOR_FLAGS(ElementStates)

// The paint rules: plain functions from attribute values and states to pens, brushes and fonts. Colours come in packed
// as 0xRRGGBB, widths and font sizes in scene units. A pen of width 0 is one device pixel wide at any zoom.
namespace paintrules {

// Texts are rendered at five times their size and scaled down, which keeps small labels sharp. This is the factor
// between the font that a text is drawn with and its size in the scene.
constexpr double TextRenderScale = 5.0;
constexpr double TextItemScale = 1.0 / TextRenderScale;

// Returns an opaque colour; bits above 23 are ignored.
[[nodiscard]] QColor colorOf(unsigned int rgb);

// The pen of a line, which looks the same in every state, and its width, which is truncated to whole units.
[[nodiscard]] int lineWidth(double strokeWidth);
[[nodiscard]] QPen linePen(unsigned int strokeColor, double strokeWidth);

// A border and a fill. The colours have an alpha channel; a border with alpha 0 is invisible.
struct Look
{
    QRgb border; // colour
    double borderWidth; // scene units, 0 to 32767
    QRgb fill; // colour
};

// The filter wins over the selection for the border; for the fill, the highlight wins over the filter, and the filter
// over the selection.
[[nodiscard]] Look rectLook(unsigned int fillColor, unsigned int strokeColor, double strokeWidth, ElementStates states);

// A polygon has no border of its own and does not show the filter.
[[nodiscard]] Look polygonLook(unsigned int fillColor, ElementStates states);

// The look as QPainter needs it.
[[nodiscard]] QPen borderPen(const Look& look);
[[nodiscard]] QBrush fillBrush(const Look& look);

// The font of a text, which looks the same in every state, and its pixel size, which is at least 1. Properties that the
// font leaves open, such as the weight, are the painter's.
[[nodiscard]] int textPixelSize(double fontSize);
[[nodiscard]] QFont textFont(const QString& family, double fontSize);

} // namespace paintrules
} // namespace mirn::zelchipview
