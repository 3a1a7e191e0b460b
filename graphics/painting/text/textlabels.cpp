// SPDX-License-Identifier: MIT
#include "graphics/painting/text/textlabels.h"

#include "graphics/elements/paintrules.h"

#include <algorithm>

namespace mirn::zelchipview {

namespace {

bool isBreakOrTab(QChar character)
{
    return character.unicode() < u' ' || character == QChar::LineSeparator || character == QChar::ParagraphSeparator;
}

} // namespace

TextLabel* TextLabels::label(const QString& text, const QString& family, double fontSize)
{
    const QString key = family + QChar(0) + QString::number(paintrules::textPixelSize(fontSize)) + QChar(0) + text;
    const int number = static_cast<int>(m_labels.size());
    std::shared_ptr<TextLabel>& label = m_labels[key];
    if (!label) {
        const bool isSingleLine = std::none_of(text.begin(), text.end(), [](QChar c) { return isBreakOrTab(c); });
        label = std::make_shared<TextLabel>(TextLabel{text, number, fontIndex(family, fontSize), isSingleLine});
    }
    return label.get();
}

int TextLabels::fontIndex(const QString& family, double fontSize)
{
    const QString key = family + QChar(0) + QString::number(paintrules::textPixelSize(fontSize));
    const auto known = m_fontIndexes.constFind(key);
    if (known != m_fontIndexes.constEnd())
        return known.value();
    const int index = static_cast<int>(m_fonts.size());
    m_fonts.push_back(paintrules::textFont(family, fontSize));
    m_fontIndexes.insert(key, index);
    return index;
}

} // namespace mirn::zelchipview
