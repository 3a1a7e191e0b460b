// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QHash>
#include <QRawFont>
#include <QRectF>

#include <vector>

namespace mirn::zelchip {

class PdfFile;

// The glyphs that the texts of a page have, as fonts of outlines (Type 3) with 256 glyphs each. Outlines can be had of
// every font, whatever its file is like. A glyph is kept once, with the character that it stands for, so that texts can
// be searched and copied.
class PdfFonts final
{
public:
    // Where a glyph is found: the name of the font on the page, the glyph's code in it, and its width in thousandths of
    // the font's size.
    struct Glyph
    {
        int font;
        int code;
        double width;
    };

    // The number of a typeface, which its sizes share.
    [[nodiscard]] int face(const QRawFont& font);

    // The character is 0 if it is not known.
    [[nodiscard]] Glyph glyph(int face, quint32 index, QChar character);

    [[nodiscard]] static QByteArray name(int font) { return "/F" + QByteArray::number(font); }

    // Returns the entries of the page's dictionary of fonts.
    [[nodiscard]] QByteArray write(PdfFile& file) const;

private:
    struct Outline
    {
        QByteArray path;
        QRectF bounds;
        double width;
        QChar character;
    };

    [[nodiscard]] static Outline outline(const QRawFont& font, quint32 index, QChar character);
    [[nodiscard]] int writeFont(PdfFile& file, int first, int end) const;

    std::vector<QRawFont> m_known; // as texts have them
    std::vector<int> m_faceOfKnown;
    std::vector<QRawFont> m_faces; // in a size that hinting does not change
    std::vector<Outline> m_outlines;
    QHash<quint64, int> m_numbers; // of the outlines, by face, glyph index and character
};

} // namespace mirn::zelchip
