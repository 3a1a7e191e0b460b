// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QPoint>

class QRawFont;

namespace mirn::zelchipview {

// A glyph in black on white, as QPainter draws it on a widget.
struct GlyphPicture
{
    QImage image; // of Format_RGB32; null where the glyph cannot be drawn
    QPoint origin; // the pixel of the glyph's origin
};

// `scale` is the number of pixels per pixel of the font, `shift` what the glyph is moved to the right, in pixels.
[[nodiscard]] GlyphPicture glyphPicture(const QRawFont& font, quint32 glyph, double scale, double shift);

// Whether glyphs of a font are smoothed in grey, and stand between pixels where the text wants it. Others have colours,
// are smoothed with the red, green and blue of a screen's pixels, or are hinted so that they stand on whole pixels.
// `glyph` is one of those in the font.
[[nodiscard]] bool hasUsualGlyphs(const QRawFont& font, quint32 glyph);

} // namespace mirn::zelchipview
