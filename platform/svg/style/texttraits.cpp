// SPDX-License-Identifier: MIT
#include "platform/svg/style/texttraits.h"

#include "platform/svg/base/number.h"

#include <algorithm>
#include <charconv>

namespace mirn::zelsvg {

namespace {

[[nodiscard]] bool isBold(std::string_view weight)
{
    constexpr int LeastBold = 600;
    int number = 0;
    std::from_chars(weight.data(), weight.data() + weight.size(), number);
    return equalsIgnoringCase(weight, "bold") || equalsIgnoringCase(weight, "bolder") || number >= LeastBold;
}

[[nodiscard]] bool isItalic(std::string_view style)
{
    return equalsIgnoringCase(style, "italic") || equalsIgnoringCase(style.substr(0, 7), "oblique");
}

// A word counts as zero, because only numbers are lengths.
[[nodiscard]] bool isZero(std::string_view text)
{
    double number = 0.0;
    return !scanNumber(text.data(), text.data() + text.size(), number) || number == 0.0;
}

[[nodiscard]] bool isVertical(std::string_view writingMode)
{
    return equalsIgnoringCase(writingMode.substr(0, 2), "tb")
        || equalsIgnoringCase(writingMode.substr(0, 8), "vertical")
        || equalsIgnoringCase(writingMode.substr(0, 8), "sideways");
}

} // namespace

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
        return !isZero(value) || equalsIgnoringCase(value, "sub") || equalsIgnoringCase(value, "super");
    case AttributeName::WritingMode:
        return isVertical(value);
    case AttributeName::Direction:
        return equalsIgnoringCase(value, "rtl");
    case AttributeName::FontStretch:
        return !equalsIgnoringCase(value, "normal") && value != "100%";
    default:
        return !equalsIgnoringCase(value, "normal") && !equalsIgnoringCase(value, "none");
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
        if (equalsIgnoringCase(word, "small-caps"))
            setTrait(TextTrait::Effects, true, traits);
        words.remove_prefix(end);
    }
}

} // namespace mirn::zelsvg
