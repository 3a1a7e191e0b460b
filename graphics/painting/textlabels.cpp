// SPDX-License-Identifier: MIT
#include "graphics/painting/textlabels.h"

#include <QGlyphRun>
#include <QTextLayout>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

bool isBreakOrTab(QChar character)
{
    return character.unicode() < u' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

} // namespace

TextLabel* TextLabels::label(const QString& text, const QString& family, int pixelSize, const QFont& font)
{
    const QString key = family + QChar(0) + QString::number(pixelSize) + QChar(0) + text;
    std::shared_ptr<TextLabel>& label = m_labels[key];
    if (!label) {
        label = std::make_shared<TextLabel>();
        label->text = text;
        label->font = font;
        label->isSingleLine = std::none_of(text.begin(), text.end(), [](QChar c) { return isBreakOrTab(c); });
    }
    return label.get();
}

void TextLabels::shape(TextLabel& label)
{
    if (label.isShaped)
        return;
    label.isShaped = true;
    QTextLayout layout(label.text, label.font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setNumColumns(static_cast<int>(label.text.size()));
        line.setPosition(QPointF(0, -line.ascent()));
    }
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    for (const QGlyphRun& run : runs) {
        const int font = fontIndex(run.rawFont());
        const auto indexes = run.glyphIndexes();
        const auto positions = run.positions();
        for (int i = 0; i < indexes.size(); ++i)
            label.glyphs.push_back({glyphNumber(font, indexes[i]), positions[i].x(), positions[i].y()});
    }
}

int TextLabels::fontIndex(const QRawFont& font)
{
    const auto known = std::find(m_fonts.begin(), m_fonts.end(), font);
    if (known != m_fonts.end())
        return static_cast<int>(known - m_fonts.begin());
    m_fonts.push_back(font);
    return static_cast<int>(m_fonts.size()) - 1;
}

int TextLabels::glyphNumber(int font, quint32 index)
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
