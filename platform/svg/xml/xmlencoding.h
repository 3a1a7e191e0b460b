// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace mirn::zelsvg {

// The encodings of drawings that are understood.
enum class XmlEncoding : std::uint8_t { Utf8, Utf16Little, Utf16Big, Latin1, Windows1250, Windows1252 };

// Returns the encoding with this name in an XML declaration if it is one of the single-byte ones, else Utf8.
[[nodiscard]] XmlEncoding xmlEncoding(std::string_view name);

// Whether it is one of the two encodings that expat does not know.
[[nodiscard]] bool isWindows(XmlEncoding encoding);

// Fills in the character for each byte of such an encoding; -1 if there is none.
void fillWindowsMap(XmlEncoding encoding, int (&map)[256]);

// Converts a piece of a file to UTF-8 for messages. A byte without a character becomes a character that XML does not
// allow.
[[nodiscard]] std::string decodedXml(std::string_view bytes, XmlEncoding encoding);

} // namespace mirn::zelsvg
