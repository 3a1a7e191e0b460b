// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QHash>
#include <QString>

#include <memory>
#include <vector>

namespace mirn::zelchipview {

// A text of the drawing and its font.
struct TextLabel
{
    QString text;
    int number; // counts from 0
    int font; // index for TextLabels::font()
    bool isSingleLine; // without line breaks and tabs
};

// The texts of a drawing. Each is stored once for all elements that show it in the same font.
class TextLabels final
{
public:
    // Returns the label for a text and font, which is created if needed. This object owns it.
    [[nodiscard]] TextLabel* label(const QString& text, const QString& family, double fontSize);

    // Returns the font that a text's item sets. Properties that it leaves open, such as the weight, are the view's.
    [[nodiscard]] const QFont& font(int index) const { return m_fonts[index]; }

private:
    [[nodiscard]] int fontIndex(const QString& family, double fontSize);

    QHash<QString, std::shared_ptr<TextLabel>> m_labels; // by font and text
    std::vector<QFont> m_fonts;
    QHash<QString, int> m_fontIndexes; // by family and pixel size
};

} // namespace mirn::zelchipview
