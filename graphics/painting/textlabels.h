// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace mirn::zelchipview {

// A text of the drawing and the font that the drawing gives it.
struct TextLabel
{
    QString text;
    int number; // counts from 0
    int font; // index for TextLabels::font()
    bool isSingleLine; // without line breaks and tabs
};

// The texts of a drawing, each kept once for all elements that show it in the same font.
class TextLabels final
{
public:
    // Owned by this object and valid as long as it is.
    [[nodiscard]] TextLabel* label(const QString& text, const QString& family, double fontSize);

    // What a text's item sets: what this leaves open, such as the weight, is the view's.
    [[nodiscard]] const QFont& font(int index) const { return m_fonts[index]; }

private:
    [[nodiscard]] int fontIndex(const QString& family, double fontSize);

    QHash<QString, std::shared_ptr<TextLabel>> m_labels; // by font and text
    std::vector<QFont> m_fonts;
    QHash<QString, int> m_fontIndexes; // by family and pixel size
};

} // namespace mirn::zelchipview
