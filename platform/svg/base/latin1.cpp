// SPDX-License-Identifier: MIT
#include "platform/svg/base/latin1.h"

#include "platform/svg/base/diagnostics.h"

#include <algorithm>
#include <iterator>

namespace mirn::zelsvg {

namespace {

struct Replacement
{
    char32_t character;
    std::string_view text;
};

// Sorted by character.
constexpr Replacement Replacements[] = {
    {0x0132, "IJ"},
    {0x0133, "ij"},
    {0x0149, "'n"},
    {0x0152, "OE"},
    {0x0153, "oe"},
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

// The letters U+0100 to U+017F without their marks; '?' for those that are not a single letter.
constexpr char32_t FirstMarked = 0x100;
constexpr std::string_view Unmarked = "AaAaAaCcCcCcCcDdDdEeEeEeEeEeGgGgGgGgHhHhIiIiIiIiIi??JjKkkLlLlLlLlLlNnNnNn?"
                                      "NnOoOoOo??RrRrRrSsSsSsSsTtTtTtUuUuUuUuUu"
                                      "UuWwYyYZzZzZzs";
static_assert(Unmarked.size() == 0x80);

// The letters that exist in ISO 8859-1 with this combining mark, and the results.
struct Composition
{
    char32_t mark;
    std::string_view letters;
    std::string_view marked;
};

constexpr Composition Compositions[] = {
    {0x0300, "AEIOUaeiou", "\xC0\xC8\xCC\xD2\xD9\xE0\xE8\xEC\xF2\xF9"}, // grave
    {0x0301, "AEIOUYaeiouy", "\xC1\xC9\xCD\xD3\xDA\xDD\xE1\xE9\xED\xF3\xFA\xFD"}, // acute
    {0x0302, "AEIOUaeiou", "\xC2\xCA\xCE\xD4\xDB\xE2\xEA\xEE\xF4\xFB"}, // circumflex
    {0x0303, "ANOano", "\xC3\xD1\xD5\xE3\xF1\xF5"}, // tilde
    {0x0306, "", ""}, // breve
    {0x0307, "", ""}, // dot above
    {0x0308, "AEIOUaeiouy", "\xC4\xCB\xCF\xD6\xDC\xE4\xEB\xEF\xF6\xFC\xFF"}, // diaeresis
    {0x030A, "Aa", "\xC5\xE5"}, // ring
    {0x030B, "", ""}, // double acute
    {0x030C, "", ""}, // caron
    {0x0327, "Cc", "\xC7\xE7"}, // cedilla
    {0x0328, "", ""}, // ogonek
};

[[nodiscard]] bool isLetter(char c)
{
    const char lower = static_cast<char>(c | 0x20);
    return (lower >= 'a' && lower <= 'z') || static_cast<unsigned char>(c) >= 0xC0;
}

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
    if (character >= FirstMarked && character - FirstMarked < Unmarked.size()
        && Unmarked[character - FirstMarked] != '?')
        return Unmarked.substr(character - FirstMarked, 1);
    const auto* found = std::lower_bound(std::begin(Replacements), std::end(Replacements), character,
        [](const Replacement& replacement, char32_t wanted) { return replacement.character < wanted; });
    return found != std::end(Replacements) && found->character == character ? found->text : "?";
}

bool addMark(char32_t mark, std::string& latin1)
{
    constexpr char32_t FirstMark = 0x300;
    constexpr char32_t LastMark = 0x36F;
    if (mark < FirstMark || mark > LastMark || latin1.empty() || !isLetter(latin1.back()))
        return false;
    for (const Composition& composition : Compositions) {
        if (composition.mark != mark)
            continue;
        const std::size_t index = composition.letters.find(latin1.back());
        if (index != std::string_view::npos)
            latin1.back() = composition.marked[index];
        return true;
    }
    return false;
}

std::string_view toLatin1(std::string_view utf8, std::string& buffer, Diagnostics& diagnostics)
{
    if (isAscii(utf8))
        return utf8;
    buffer.clear();
    while (!utf8.empty()) {
        char single[2];
        const char32_t character = takeCharacter(utf8);
        if (addMark(character, buffer))
            continue;
        const std::string_view text = latin1Of(character, single);
        if (text == "?" && character != '?')
            diagnostics.warn(Unsupported::Character);
        buffer.append(text);
    }
    return buffer;
}

} // namespace mirn::zelsvg
