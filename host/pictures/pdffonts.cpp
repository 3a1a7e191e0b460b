// SPDX-License-Identifier: MIT
#include "host/pictures/pdffonts.h"

#include "host/pictures/pdfcontent.h"
#include "host/pictures/pdffile.h"

#include <QByteArrayList>

#include <algorithm>

namespace mirn::zelchip {

namespace {

constexpr int GlyphsPerFont = 256; // a code is a byte
constexpr int MostCharactersAtOnce = 100; // in one list of a character map
constexpr double OutlineSize = 1000; // the units of a glyph in PDF

bool isSameFace(const QRawFont& one, const QRawFont& other)
{
    return one.familyName() == other.familyName() && one.styleName() == other.styleName()
        && one.weight() == other.weight() && one.style() == other.style();
}

QByteArray hexadecimal(int number, int digits)
{
    return '<' + QByteArray::number(number, 16).rightJustified(digits, '0') + '>';
}

QByteArray box(const QRectF& rect)
{
    PdfContent numbers;
    numbers << rect.topLeft() << rect.bottomRight() << "";
    return numbers.text().trimmed();
}

// What characters the codes of a font stand for.
QByteArray characterMap(const QByteArrayList& pairs)
{
    QByteArray map = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CMapName /Characters def\n"
                     "/CMapType 2 def\n1 begincodespacerange\n<00> <ff>\nendcodespacerange\n";
    for (int first = 0; first < pairs.size(); first += MostCharactersAtOnce) {
        const QByteArrayList some = pairs.mid(first, MostCharactersAtOnce);
        map += QByteArray::number(some.size()) + " beginbfchar\n" + some.join('\n') + "\nendbfchar\n";
    }
    return map + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend";
}

} // namespace

int PdfFonts::face(const QRawFont& font)
{
    const auto known = std::find(m_known.begin(), m_known.end(), font);
    if (known != m_known.end())
        return m_faceOfKnown[known - m_known.begin()];
    const auto same
        = std::find_if(m_faces.begin(), m_faces.end(), [&](const QRawFont& face) { return isSameFace(face, font); });
    const int number = static_cast<int>(same - m_faces.begin());
    if (same == m_faces.end()) {
        m_faces.push_back(font);
        m_faces.back().setPixelSize(OutlineSize);
    }
    m_known.push_back(font);
    m_faceOfKnown.push_back(number);
    return number;
}

PdfFonts::Glyph PdfFonts::glyph(int face, quint32 index, QChar character)
{
    const quint64 key = quint64(face) << 48 | quint64(index) << 16 | character.unicode();
    auto number = m_numbers.constFind(key);
    if (number == m_numbers.constEnd()) {
        number = m_numbers.insert(key, static_cast<int>(m_outlines.size()));
        m_outlines.push_back(outline(m_faces[face], index, character));
    }
    return {*number / GlyphsPerFont, *number % GlyphsPerFont, m_outlines[*number].width};
}

// Glyphs stand upright on their base line, where those of Qt hang from it.
PdfFonts::Outline PdfFonts::outline(const QRawFont& font, quint32 index, QChar character)
{
    const QPainterPath path = QTransform::fromScale(1, -1).map(font.pathForGlyph(index));
    const auto advances = font.advancesForGlyphIndexes({index});
    PdfContent lines;
    lines << path;
    return {lines.text(), path.controlPointRect(), advances.isEmpty() ? 0 : advances.first().x(), character};
}

QByteArray PdfFonts::write(PdfFile& file) const
{
    const int count = static_cast<int>(m_outlines.size());
    QByteArray entries;
    for (int first = 0; first < count; first += GlyphsPerFont) {
        const int object = writeFont(file, first, std::min(count, first + GlyphsPerFont));
        entries += name(first / GlyphsPerFont) + ' ' + pdfReference(object) + ' ';
    }
    return entries;
}

int PdfFonts::writeFont(PdfFile& file, int first, int end) const
{
    QByteArray glyphs;
    QByteArray names;
    QByteArray widths;
    QByteArrayList characters;
    QRectF bounds;
    for (int number = first; number < end; ++number) {
        const Outline& outline = m_outlines[number];
        const QByteArray name = "/g" + QByteArray::number(number - first);
        PdfContent width;
        width << outline.width;
        widths += width.text();
        const QByteArray metrics = width.text() + "0 " + box(outline.bounds) + " d1\n";
        names += name + ' ';
        glyphs += name + ' ' + pdfReference(file.addStream(metrics + outline.path + "f")) + '\n';
        bounds |= outline.bounds;
        if (!outline.character.isNull())
            characters += hexadecimal(number - first, 2) + ' ' + hexadecimal(outline.character.unicode(), 4);
    }
    return file.add("<< /Type /Font /Subtype /Type3 /FontMatrix [0.001 0 0 0.001 0 0] /Resources << >>\n/FontBBox ["
        + box(bounds) + "] /FirstChar 0 /LastChar " + QByteArray::number(end - first - 1) + " /Widths [" + widths
        + "]\n/Encoding << /Type /Encoding /Differences [0 " + names + "] >>\n/CharProcs <<\n" + glyphs
        + ">>\n/ToUnicode " + pdfReference(file.addStream(characterMap(characters))) + " >>");
}

} // namespace mirn::zelchip
