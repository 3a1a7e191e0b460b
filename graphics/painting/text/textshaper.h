// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/text/textlabels.h"

#include <QRawFont>

#include <optional>
#include <vector>

namespace mirn::zelchipview {

// A glyph and its position in a shaped text. Glyphs are numbered from 0 in the order of first use.
struct PlacedGlyph
{
    int number;
    double x; // its origin, from the start of the base line, in pixels of the unscaled font
    double y;
};

struct ShapedText
{
    std::vector<PlacedGlyph> glyphs;
    bool isUsual; // see hasUsualGlyphs()
};

// Shapes labels as a view shows them: in their own family and size, with the weight, slant, hinting, spacing and all
// other properties of the view's font. Each label is shaped when it is first drawn.
class TextShaper final
{
public:
    struct Glyph
    {
        int font; // index for rawFont()
        quint32 index; // in that font
    };

    explicit TextShaper(const TextLabels& labels); // not owned; must outlive this object

    // Sets the view's font. If it differs from the previous one, discards all shapes and returns true.
    bool setViewFont(const QFont& font);

    // Returns whether texts consist of glyphs only: there are no lines along them and no small capitals.
    [[nodiscard]] bool hasNoDecoration() const;

    // Returns the label's font with all properties resolved, so that a painter adds none of its own.
    [[nodiscard]] const QFont& font(const TextLabel& label);

    // Returns null if the label has not been shaped yet.
    [[nodiscard]] const ShapedText* find(const TextLabel& label) const;

    // Shapes the label if needed. The result is valid until the next call.
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
    std::vector<std::optional<QFont>> m_fonts; // by TextLabel::font
    std::vector<std::optional<ShapedText>> m_shapes; // by TextLabel::number
    std::vector<QRawFont> m_rawFonts;
    std::vector<bool> m_areUsual; // whether the glyphs of the raw font with the same index are usual
    std::vector<Glyph> m_glyphs;
    QHash<quint64, int> m_numbers; // glyph numbers, by raw font and glyph index
};

} // namespace mirn::zelchipview
