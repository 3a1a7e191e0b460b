// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zelsvg {

// The encodings that drawings come in.
enum class XmlEncoding : std::uint8_t { Utf8, Utf16Little, Utf16Big, Latin1, Windows1250, Windows1252 };

// By the name in an XML declaration; Utf8 for any that is none of those with one byte for each character.
[[nodiscard]] XmlEncoding xmlEncoding(std::string_view name);

// The two that expat does not know.
[[nodiscard]] bool isWindows(XmlEncoding encoding);

// What each byte of such an encoding stands for; -1 for no character.
void fillWindowsMap(XmlEncoding encoding, int (&map)[256]);

// A piece of a file in UTF-8, for messages. What is no character becomes one that XML does not allow.
[[nodiscard]] std::string decodedXml(std::string_view bytes, XmlEncoding encoding);

} // namespace zelsvg
