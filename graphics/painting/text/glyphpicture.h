// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>

class QRawFont;

namespace mirn::zelchipview {

// A glyph in black on white, as QPainter draws it on a widget.
struct GlyphPicture
{
    QImage image; // Format_RGB32; null if the glyph cannot be drawn
    QPoint origin; // the pixel of the image at the glyph's origin
};

// Draws a glyph. `scale` is the number of pixels per pixel of the font; `shift` moves the glyph to the right, in
// pixels.
[[nodiscard]] GlyphPicture glyphPicture(const QRawFont& font, quint32 glyph, double scale, double shift);

// Returns whether the glyphs of a font are antialiased in grey and stand at positions between pixels. Other glyphs are
// coloured, antialiased with the red, green and blue of a screen's pixels, or hinted to whole pixels. `glyph` is any
// glyph of the font.
[[nodiscard]] bool hasUsualGlyphs(const QRawFont& font, quint32 glyph);

} // namespace mirn::zelchipview
