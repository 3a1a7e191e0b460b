// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace zelsvg {

class Diagnostics;

// `utf8` (well-formed) in ISO 8859-1. Common typographic characters become what one would type for them ("--", "Ohm"),
// letters with marks that are not in it those without, others '?' with a warning. The result is `utf8` itself or lives
// in `buffer`.
[[nodiscard]] std::string_view toLatin1(std::string_view utf8, std::string& buffer, Diagnostics& diagnostics);

// One character off the front of well-formed UTF-8, which is not empty.
[[nodiscard]] char32_t takeCharacter(std::string_view& utf8);

// Puts a combining mark on the letter that `latin1` ends in; where ISO 8859-1 has no such letter, it stays as it is.
// False for any other character, for other marks and behind anything but a letter.
bool addMark(char32_t mark, std::string& latin1);

// Its text in ISO 8859-1; empty for one that has none and needs none (a zero-width blank), "?" for the unknown.
[[nodiscard]] std::string_view latin1Of(char32_t character, char (&buffer)[2]);

} // namespace zelsvg
