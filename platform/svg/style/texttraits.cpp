// SPDX-License-Identifier: MIT
#include "platform/svg/style/texttraits.h"

#include "platform/svg/base/number.h"

#include <algorithm>
#include <charconv>

namespace zelsvg {

namespace {

[[nodiscard]] bool isBold(std::string_view weight)
{
    constexpr int LeastBold = 600;
    int number = 0;
    std::from_chars(weight.data(), weight.data() + weight.size(), number);
    return weight == "bold" || weight == "bolder" || number >= LeastBold;
}

[[nodiscard]] bool isItalic(std::string_view style)
{
    return style == "italic" || style.substr(0, 7) == "oblique";
}

// A word counts as zero, because only numbers are lengths.
[[nodiscard]] bool isZero(std::string_view text)
{
    double number = 0.0;
    return !scanNumber(text.data(), text.data() + text.size(), number) || number == 0.0;
}

[[nodiscard]] bool isVertical(std::string_view writingMode)
{
    return writingMode.substr(0, 2) == "tb" || writingMode.substr(0, 8) == "vertical"
        || writingMode.substr(0, 8) == "sideways";
}

} // namespace

std::uint8_t traitOf(AttributeName property)
{
    switch (property) {
    case AttributeName::FontWeight:
        return TextTrait::Bold;
    case AttributeName::FontStyle:
        return TextTrait::Italic;
    case AttributeName::TextDecoration:
        return TextTrait::Lines;
    case AttributeName::LetterSpacing:
        return TextTrait::LetterSpacing;
    case AttributeName::WordSpacing:
        return TextTrait::WordSpacing;
    case AttributeName::WritingMode:
        return TextTrait::Vertical;
    case AttributeName::BaselineShift:
    case AttributeName::Direction:
    case AttributeName::FontStretch:
    case AttributeName::FontVariant:
    case AttributeName::TextTransform:
        return TextTrait::Effects;
    default:
        return 0;
    }
}

bool hasTrait(AttributeName property, std::string_view value)
{
    switch (property) {
    case AttributeName::FontWeight:
        return isBold(value);
    case AttributeName::FontStyle:
        return isItalic(value);
    case AttributeName::TextDecoration:
        return value.find("line") != std::string_view::npos; // underline, overline, line-through
    case AttributeName::LetterSpacing:
    case AttributeName::WordSpacing:
    case AttributeName::BaselineShift:
        return !isZero(value) || value == "sub" || value == "super";
    case AttributeName::WritingMode:
        return isVertical(value);
    case AttributeName::Direction:
        return value == "rtl";
    case AttributeName::FontStretch:
        return value != "normal" && value != "100%";
    default:
        return value != "normal" && value != "none";
    }
}

void setTrait(std::uint8_t trait, bool isSet, std::uint8_t& traits)
{
    constexpr int Lasting = TextTrait::Lines | TextTrait::Effects;
    traits = static_cast<std::uint8_t>(isSet ? traits | trait : traits & ~(trait & ~Lasting));
}

void applyFontTraits(std::string_view words, std::uint8_t& traits)
{
    setTrait(TextTrait::Bold | TextTrait::Italic, false, traits);
    for (words = trimmed(words); !words.empty(); words = trimmed(words)) {
        const std::size_t end = std::min(words.find_first_of(" \t\n"), words.size());
        const std::string_view word = words.substr(0, end);
        if (isBold(word))
            setTrait(TextTrait::Bold, true, traits);
        if (isItalic(word))
            setTrait(TextTrait::Italic, true, traits);
        if (word == "small-caps")
            setTrait(TextTrait::Effects, true, traits);
        words.remove_prefix(end);
    }
}

} // namespace zelsvg
