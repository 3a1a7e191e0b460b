// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/textlabels.h"

#include <QRawFont>

#include <optional>
#include <vector>

namespace mirn::zelchipview {

// A glyph of a font, by a number that counts from 0 in the order of first use.
struct PlacedGlyph
{
    int number;
    double x; // where its origin stands, from the start of the base line, in pixels of the unscaled font
    double y;
};

struct ShapedText
{
    std::vector<PlacedGlyph> glyphs;
    bool isUsual; // see hasUsualGlyphs()
};

// The labels as a view shows them: in their own family and size, with the weight, slant, hinting, spacing and whatever
// else of the view's font. Each is shaped when it is first drawn.
class TextShaper final
{
public:
    struct Glyph
    {
        int font; // index for rawFont()
        quint32 index; // in that font
    };

    explicit TextShaper(const TextLabels& labels); // not owned; must outlive this object

    // Forgets all that belongs to another font. Returns whether it was another one.
    bool setViewFont(const QFont& font);

    // Whether texts are nothing but glyphs: without lines along them, and without capitals that are smaller letters.
    [[nodiscard]] bool makesGlyphsOnly() const;

    // Complete: a painter adds nothing of its own.
    [[nodiscard]] const QFont& font(const TextLabel& label);

    // Null while the label was not shaped.
    [[nodiscard]] const ShapedText* find(const TextLabel& label) const;

    // Valid until the next call.
    [[nodiscard]] const ShapedText& shape(const TextLabel& label);

    [[nodiscard]] int glyphCount() const { return static_cast<int>(m_glyphs.size()); }
    [[nodiscard]] const Glyph& glyph(int number) const { return m_glyphs[number]; }
    [[nodiscard]] const QRawFont& rawFont(int index) const { return m_rawFonts[index]; }

private:
    [[nodiscard]] ShapedText shaped(const TextLabel& label);
    [[nodiscard]] int rawFontIndex(const QRawFont& font, quint32 glyph);
    [[nodiscard]] int glyphNumber(int font, quint32 index);

    const TextLabels& m_labels;
    QFont m_viewFont;
    std::vector<std::optional<QFont>> m_fonts; // by the label's index
    std::vector<std::optional<ShapedText>> m_shapes; // by the label's number
    std::vector<QRawFont> m_rawFonts;
    std::vector<bool> m_areUsual; // glyphs of the raw font with the same index
    std::vector<Glyph> m_glyphs;
    QHash<quint64, int> m_numbers; // of glyphs, by font and index
};

} // namespace mirn::zelchipview
