// SPDX-License-Identifier: MIT
#include "graphics/painting/text/textshaper.h"

#include "graphics/painting/text/glyphpicture.h"

#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// Returns the font as a painter on the view would resolve it, with all properties fixed. A painter on an image would
// take open properties from the application's font.
QFont completed(const QFont& font, const QFont& viewFont)
{
    QFont complete = font.resolve(viewFont);
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    complete.setResolveMask(QFont::AllPropertiesResolved);
#else
    complete.resolve(QFont::AllPropertiesResolved);
#endif
    return complete;
}

template <typename Value> Value& at(std::vector<Value>& values, int index)
{
    if (index >= static_cast<int>(values.size()))
        values.resize(index + 1);
    return values[index];
}

} // namespace

TextShaper::TextShaper(const TextLabels& labels)
    : m_labels(labels)
{ }

bool TextShaper::setViewFont(const QFont& font)
{
    if (font == m_viewFont)
        return false;
    m_viewFont = font;
    m_fonts.clear();
    m_shapes.clear();
    m_rawFonts.clear();
    m_areUsual.clear();
    m_glyphs.clear();
    m_numbers.clear();
    return true;
}

bool TextShaper::hasNoDecoration() const
{
    return !m_viewFont.underline() && !m_viewFont.overline() && !m_viewFont.strikeOut()
        && m_viewFont.capitalization() != QFont::SmallCaps;
}

const QFont& TextShaper::font(const TextLabel& label)
{
    std::optional<QFont>& font = at(m_fonts, label.font);
    if (!font)
        font = completed(m_labels.font(label.font), m_viewFont);
    return *font;
}

const ShapedText* TextShaper::find(const TextLabel& label) const
{
    const bool isShaped = label.number < static_cast<int>(m_shapes.size()) && m_shapes[label.number];
    return isShaped ? &*m_shapes[label.number] : nullptr;
}

const ShapedText& TextShaper::shape(const TextLabel& label)
{
    std::optional<ShapedText>& text = at(m_shapes, label.number);
    if (!text)
        text = shaped(label);
    return *text;
}

ShapedText TextShaper::shaped(const TextLabel& label)
{
    QTextLayout layout(label.text, font(label));
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setNumColumns(static_cast<int>(label.text.size()));
        line.setPosition(QPointF(0, -line.ascent()));
    }
    layout.endLayout();
    ShapedText text{{}, true};
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun& run : runs) {
        const auto indexes = run.glyphIndexes();
        if (indexes.isEmpty())
            continue;
        const int font = rawFontIndex(run.rawFont(), indexes.first());
        text.isUsual = text.isUsual && m_areUsual[font];
        const auto positions = run.positions();
        for (int i = 0; i < indexes.size(); ++i)
            text.glyphs.push_back({glyphNumber(font, indexes[i]), positions[i].x(), positions[i].y()});
    }
    return text;
}

int TextShaper::rawFontIndex(const QRawFont& font, quint32 glyph)
{
    const auto known = std::find(m_rawFonts.begin(), m_rawFonts.end(), font);
    if (known != m_rawFonts.end())
        return static_cast<int>(known - m_rawFonts.begin());
    m_rawFonts.push_back(font);
    m_areUsual.push_back(hasUsualGlyphs(font, glyph));
    return static_cast<int>(m_rawFonts.size()) - 1;
}

int TextShaper::glyphNumber(int font, quint32 index)
{
    const quint64 key = (quint64(font) << 32) | index;
    const auto known = m_numbers.constFind(key);
    if (known != m_numbers.constEnd())
        return known.value();
    const int number = glyphCount();
    m_glyphs.push_back({font, index});
    m_numbers.insert(key, number);
    return number;
}

} // namespace mirn::zelchipview
