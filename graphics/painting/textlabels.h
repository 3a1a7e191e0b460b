// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QHash>
#include <QRawFont>
#include <QString>

#include <memory>
#include <vector>

namespace mirn::zelchipview {

// A glyph of a font, by a number that counts from 0 in the order of first use.
struct PlacedGlyph
{
    int number;
    double x; // where its origin stands, from the start of the base line, in pixels of the unscaled font
    double y;
};

// A text and its font, with the glyphs that the font's shaper makes of it.
struct TextLabel
{
    QString text;
    QFont font;
    bool isSingleLine = true; // without line breaks and tabs
    bool isShaped = false;
    std::vector<PlacedGlyph> glyphs;
};

// The texts of a drawing, each kept once for all elements that show it in the same font, and shaped when it is first
// drawn.
class TextLabels final
{
public:
    struct Glyph
    {
        int font; // index for font()
        quint32 index; // in that font
    };

    // Owned by this object and valid as long as it is.
    [[nodiscard]] TextLabel* label(const QString& text, const QString& family, int pixelSize, const QFont& font);

    // Fills in the glyphs if that has not been done.
    void shape(TextLabel& label);

    [[nodiscard]] int glyphCount() const { return static_cast<int>(m_glyphs.size()); }
    [[nodiscard]] const Glyph& glyph(int number) const { return m_glyphs[number]; }
    [[nodiscard]] const QRawFont& font(int index) const { return m_fonts[index]; }

private:
    [[nodiscard]] int fontIndex(const QRawFont& font);
    [[nodiscard]] int glyphNumber(int font, quint32 index);

    QHash<QString, std::shared_ptr<TextLabel>> m_labels; // by font and text
    std::vector<QRawFont> m_fonts;
    std::vector<Glyph> m_glyphs;
    QHash<quint64, int> m_numbers; // of glyphs, by font and index
};

} // namespace mirn::zelchipview
