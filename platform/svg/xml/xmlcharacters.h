// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>

namespace zelsvg {

// What a byte of an XML file may be, one bit each; 0 for what always needs a closer look. NUL, which ends every buffer,
// is nothing of all that.
namespace XmlByte {
constexpr std::uint8_t Space = 1;
constexpr std::uint8_t NameStart = 2; // ASCII alone
constexpr std::uint8_t NamePart = 4;
constexpr std::uint8_t InText = 8; // stands for itself in a text
constexpr std::uint8_t InValue = 16; // stands for itself in an attribute's value, whatever its quotes are
} // namespace XmlByte

namespace detail {

constexpr bool isOneOf(int c, const char* list)
{
    for (; *list; ++list) {
        if (*list == c)
            return true;
    }
    return false;
}

constexpr std::uint8_t xmlByteOf(int c)
{
    const bool isLetter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
    const bool isPlain = c >= ' ' && c < 0x80;
    int bits = isOneOf(c, " \t\n\r") ? XmlByte::Space : 0;
    bits |= isLetter ? XmlByte::NameStart : 0;
    bits |= isLetter || (c >= '0' && c <= '9') || isOneOf(c, ":-.") ? XmlByte::NamePart : 0;
    bits |= (isPlain && !isOneOf(c, "<&]")) || c == '\t' ? XmlByte::InText : 0;
    bits |= isPlain && !isOneOf(c, "<&\"'") ? XmlByte::InValue : 0;
    return static_cast<std::uint8_t>(bits);
}

constexpr std::array<std::uint8_t, 256> makeXmlBytes()
{
    std::array<std::uint8_t, 256> bytes{};
    for (int c = 0; c < 256; ++c)
        bytes[static_cast<std::size_t>(c)] = xmlByteOf(c);
    return bytes;
}

inline constexpr std::array<std::uint8_t, 256> XmlBytes = makeXmlBytes();

} // namespace detail

[[nodiscard]] inline std::uint8_t xmlByte(char c)
{
    return detail::XmlBytes[static_cast<unsigned char>(c)];
}

// The first byte from `p` on that is not of this kind; a NUL at the latest.
[[nodiscard]] inline const char* skipXmlBytes(const char* p, std::uint8_t kind)
{
    while (xmlByte(*p) & kind)
        ++p;
    return p;
}

// `c` is below 0x110000.
void appendUtf8(char32_t c, std::string& text);

// The end of the character beyond ASCII at `p`. Null when that is not well-formed UTF-8 or no character of XML. A NUL
// stands behind the text.
[[nodiscard]] const char* skipXmlCharacter(const char* p);

// Reads a reference ("&lt;", "&#x41;") at `p` and appends what it stands for. Gives its end. Null for an entity that is
// none of XML's own five, for a character that is none of XML, and for anything that is no reference. A NUL stands
// behind the text.
[[nodiscard]] const char* readXmlReference(const char* p, std::string& text);

} // namespace zelsvg
