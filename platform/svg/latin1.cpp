// SPDX-License-Identifier: MIT
#include "platform/svg/latin1.h"

#include "platform/svg/diagnostics.h"

#include <algorithm>
#include <iterator>

namespace zelsvg {

namespace {

struct Replacement
{
    char32_t character;
    std::string_view text;
};

// Sorted by character.
constexpr Replacement Replacements[] = {
    {0x0152, "OE"},
    {0x0153, "oe"},
    {0x0160, "S"},
    {0x0161, "s"},
    {0x0178, "Y"},
    {0x017D, "Z"},
    {0x017E, "z"},
    {0x0192, "f"},
    {0x02C6, "^"},
    {0x02DC, "~"},
    {0x0394, "Delta"},
    {0x03A3, "Sigma"},
    {0x03A9, "Ohm"},
    {0x03B1, "alpha"},
    {0x03B2, "\xDF"},
    {0x03BB, "lambda"},
    {0x03BC, "\xB5"},
    {0x03C0, "pi"},
    {0x2002, " "},
    {0x2003, " "},
    {0x2007, " "},
    {0x2008, " "},
    {0x2009, " "},
    {0x200A, " "},
    {0x200B, ""},
    {0x200C, ""},
    {0x200D, ""},
    {0x2010, "-"},
    {0x2011, "-"},
    {0x2012, "-"},
    {0x2013, "-"},
    {0x2014, "--"},
    {0x2015, "--"},
    {0x2018, "'"},
    {0x2019, "'"},
    {0x201A, "'"},
    {0x201C, "\""},
    {0x201D, "\""},
    {0x201E, "\""},
    {0x2020, "+"},
    {0x2022, "\xB7"},
    {0x2026, "..."},
    {0x202F, " "},
    {0x2030, "o/oo"},
    {0x2032, "'"},
    {0x2033, "\""},
    {0x2039, "<"},
    {0x203A, ">"},
    {0x2044, "/"},
    {0x20AC, "EUR"},
    {0x2122, "(TM)"},
    {0x2126, "Ohm"},
    {0x212A, "K"},
    {0x212B, "\xC5"},
    {0x2190, "<-"},
    {0x2192, "->"},
    {0x2194, "<->"},
    {0x2212, "-"},
    {0x2215, "/"},
    {0x221E, "inf"},
    {0x2248, "~"},
    {0x2260, "!="},
    {0x2264, "<="},
    {0x2265, ">="},
    {0xFB01, "fi"},
    {0xFB02, "fl"},
    {0xFEFF, ""},
};

[[nodiscard]] bool isAscii(std::string_view text)
{
    return std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
}

} // namespace

char32_t takeCharacter(std::string_view& utf8)
{
    const auto first = static_cast<unsigned char>(utf8.front());
    const std::size_t length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < std::min(length, utf8.size()); ++i)
        character = character << 6 | (static_cast<unsigned char>(utf8[i]) & 0x3F);
    utf8.remove_prefix(std::min(length, utf8.size()));
    return character;
}

std::string_view latin1Of(char32_t character, char (&buffer)[2])
{
    if (character < 0x80 || (character >= 0xA0 && character < 0x100)) {
        buffer[0] = static_cast<char>(character);
        return std::string_view(buffer, 1);
    }
    const auto* found = std::lower_bound(std::begin(Replacements), std::end(Replacements), character,
        [](const Replacement& replacement, char32_t wanted) { return replacement.character < wanted; });
    return found != std::end(Replacements) && found->character == character ? found->text : "?";
}

std::string_view toLatin1(std::string_view utf8, std::string& buffer, Diagnostics& diagnostics)
{
    if (isAscii(utf8))
        return utf8;
    buffer.clear();
    while (!utf8.empty()) {
        char single[2];
        const char32_t character = takeCharacter(utf8);
        const std::string_view text = latin1Of(character, single);
        if (text == "?" && character != '?')
            diagnostics.warn(Unsupported::Character);
        buffer.append(text);
    }
    return buffer;
}

} // namespace zelsvg
