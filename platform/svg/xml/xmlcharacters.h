// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <string>

namespace mirn::zelsvg {

// The classes of bytes of an XML file, one bit each; 0 for bytes that always need a closer look. NUL, which ends every
// buffer, is in no class.
namespace XmlByte {
constexpr std::uint8_t Space = 1;
constexpr std::uint8_t NameStart = 2; // ASCII only
constexpr std::uint8_t NamePart = 4;
constexpr std::uint8_t InText = 8; // stands for itself in text
constexpr std::uint8_t InValue = 16; // stands for itself in an attribute's value, whichever quotes it has
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
    const bool canPaintFromList = c >= ' ' && c < 0x80;
    int bits = isOneOf(c, " \t\n\r") ? XmlByte::Space : 0;
    bits |= isLetter ? XmlByte::NameStart : 0;
    bits |= isLetter || (c >= '0' && c <= '9') || isOneOf(c, ":-.") ? XmlByte::NamePart : 0;
    bits |= (canPaintFromList && !isOneOf(c, "<&]")) || c == '\t' ? XmlByte::InText : 0;
    bits |= canPaintFromList && !isOneOf(c, "<&\"'") ? XmlByte::InValue : 0;
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

// Returns the first byte from `p` on that is not in this class, at the latest the NUL.
[[nodiscard]] inline const char* skipXmlBytes(const char* p, std::uint8_t kind)
{
    while (xmlByte(*p) & kind)
        ++p;
    return p;
}

// Returns the first such byte; null if there is none.
[[nodiscard]] inline const char* findXmlByte(const char* begin, const char* end, char c)
{
    return static_cast<const char*>(std::memchr(begin, c, static_cast<std::size_t>(end - begin)));
}

// `c` must be below 0x110000.
void appendUtf8(char32_t c, std::string& text);

// Returns the end of the non-ASCII character at `p`; null if it is not well-formed UTF-8 or not allowed in XML. The
// text must end in a NUL.
[[nodiscard]] const char* skipXmlCharacter(const char* p);

// Reads a reference ("&lt;", "&#x41;") at `p` and appends the character. Returns its end; null for an entity other than
// XML's own five, for a character that XML does not allow and for anything that is not a reference. The text must end
// in a NUL.
[[nodiscard]] const char* readXmlReference(const char* p, std::string& text);

} // namespace mirn::zelsvg
