// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace zelsvg {

class Diagnostics;

// `utf8` (well-formed) in ISO 8859-1. Common typographic characters become what one would type for them ("--", "Ohm"),
// others '?' with a warning. The result is `utf8` itself or lives in `buffer`.
[[nodiscard]] std::string_view toLatin1(std::string_view utf8, std::string& buffer, Diagnostics& diagnostics);

// One character off the front of well-formed UTF-8, which is not empty.
[[nodiscard]] char32_t takeCharacter(std::string_view& utf8);

// Its text in ISO 8859-1; empty for one that has none and needs none (a zero-width blank), "?" for the unknown.
[[nodiscard]] std::string_view latin1Of(char32_t character, char (&buffer)[2]);

} // namespace zelsvg
