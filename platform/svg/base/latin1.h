// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;

// Converts `utf8`, which must be well-formed, to ISO 8859-1. Common typographic characters become what one would type
// instead ("--", "Ohm"); accented letters that are missing there lose their accents; any other character becomes '?'
// with a warning. The result is `utf8` itself or is stored in `buffer`.
[[nodiscard]] std::string_view toLatin1(std::string_view utf8, std::string& buffer, Diagnostics& diagnostics);

// Removes and returns the first character of a well-formed, non-empty UTF-8 text.
[[nodiscard]] char32_t takeCharacter(std::string_view& utf8);

// Adds a combining mark to the letter at the end of `latin1`, which stays as it is if ISO 8859-1 has no such letter.
// Returns false if `mark` is not one of the known marks or the text does not end in a letter.
bool addMark(char32_t mark, std::string& latin1);

// Returns the character's text in ISO 8859-1: empty for invisible characters such as a zero-width space, "?" for
// unknown ones.
[[nodiscard]] std::string_view latin1Of(char32_t character, char (&buffer)[2]);

} // namespace mirn::zelsvg
