// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>

class QRawFont;

namespace mirn::zelchipview {

// A glyph in black on white, as QPainter draws it on a widget, at several positions between two pixels.
struct GlyphPicture
{
    QImage image; // Format_RGB32, the positions side by side; null if the glyph cannot be drawn
    int width; // of each position, in pixels
    QPoint origin; // the pixel at the glyph's origin, from the corner of each position
};

// Draws a glyph `positions` times, each time moved to the right by that part of a pixel. `scale` is the number of
// pixels per pixel of the font.
[[nodiscard]] GlyphPicture glyphPicture(const QRawFont& font, quint32 glyph, double scale, int positions);

// Returns whether the glyphs of a font are antialiased in grey and stand at positions between pixels. Other glyphs are
// coloured, antialiased with the red, green and blue of a screen's pixels, or hinted to whole pixels. `glyph` is any
// glyph of the font.
[[nodiscard]] bool hasUsualGlyphs(const QRawFont& font, quint32 glyph);

} // namespace mirn::zelchipview
