// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlcharacters.h"

#include <cstring>
#include <string_view>

namespace mirn::zelsvg {

namespace {

constexpr char32_t LastCharacter = 0x10FFFF;

[[nodiscard]] bool isCharacter(char32_t c)
{
    if (c < 0x20)
        return c == '\t' || c == '\n' || c == '\r';
    return (c < 0xD800 || c > 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= LastCharacter;
}

[[nodiscard]] int digitOf(char c, int base)
{
    const char lower = static_cast<char>(c | 0x20);
    const int value = c >= '0' && c <= '9' ? c - '0' : lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : base;
    return value < base ? value : -1;
}

// `p` points after "&#".
[[nodiscard]] const char* readNumberReference(const char* p, std::string& text)
{
    const int base = *p == 'x' ? 16 : 10;
    p += *p == 'x' ? 1 : 0;
    if (digitOf(*p, base) < 0)
        return nullptr;
    char32_t value = 0;
    for (; digitOf(*p, base) >= 0; ++p) {
        value = value * static_cast<char32_t>(base) + static_cast<char32_t>(digitOf(*p, base));
        if (value > LastCharacter)
            return nullptr;
    }
    if (*p != ';' || !isCharacter(value))
        return nullptr;
    appendUtf8(value, text);
    return p + 1;
}

} // namespace

void appendUtf8(char32_t c, std::string& text)
{
    const auto following = [&](int shift) { text += static_cast<char>(0x80 | ((c >> shift) & 0x3F)); };
    if (c < 0x80) {
        text += static_cast<char>(c);
    } else if (c < 0x800) {
        text += static_cast<char>(0xC0 | (c >> 6));
        following(0);
    } else if (c < 0x10000) {
        text += static_cast<char>(0xE0 | (c >> 12));
        following(6);
        following(0);
    } else {
        text += static_cast<char>(0xF0 | (c >> 18));
        following(12);
        following(6);
        following(0);
    }
}

const char* skipXmlCharacter(const char* p)
{
    const auto byte = [p](int i) { return static_cast<unsigned char>(p[i]); };
    const int length = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : 2;
    char32_t c = byte(0) & (0x7FU >> length);
    for (int i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) // the NUL ends this loop
            return nullptr;
        c = c << 6 | (byte(i) & 0x3F);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isLead = byte(0) >= 0xC0 && byte(0) < 0xF8;
    return isLead && c >= Smallest[length] && isCharacter(c) ? p + length : nullptr;
}

const char* readXmlReference(const char* p, std::string& text)
{
    if (p[1] == '#')
        return readNumberReference(p + 2, text);
    struct Entity
    {
        std::string_view name;
        char character;
    };
    constexpr Entity Entities[] = {{"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    for (const Entity& entity : Entities) {
        if (std::strncmp(p, entity.name.data(), entity.name.size()) == 0) {
            text += entity.character;
            return p + entity.name.size();
        }
    }
    return nullptr;
}

} // namespace mirn::zelsvg
