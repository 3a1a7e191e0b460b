// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlencoding.h"

#include "platform/svg/base/number.h"
#include "platform/svg/xml/xmlcharacters.h"

#include <iterator>

namespace mirn::zelsvg {

namespace {

constexpr unsigned FirstOfWindows = 0x80; // the bytes below are ASCII
constexpr unsigned FirstOfLatin1 = 0xA0;

// The characters from 0x80 on; those of windows-1252 only up to 0x9F, because it equals ISO 8859-1 beyond. 0 for none.
// clang-format off
constexpr std::uint16_t Windows1250[] = {
    0x20AC, 0x0000, 0x201A, 0x0000, 0x201E, 0x2026, 0x2020, 0x2021,
    0x0000, 0x2030, 0x0160, 0x2039, 0x015A, 0x0164, 0x017D, 0x0179,
    0x0000, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x0000, 0x2122, 0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A,
    0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6, 0x00A7,
    0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B,
    0x00B0, 0x00B1, 0x02DB, 0x0142, 0x00B4, 0x00B5, 0x00B6, 0x00B7,
    0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C,
    0x0154, 0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7,
    0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD, 0x00CE, 0x010E,
    0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7,
    0x0158, 0x016E, 0x00DA, 0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF,
    0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F,
    0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4, 0x0151, 0x00F6, 0x00F7,
    0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};
constexpr std::uint16_t Windows1252[] = {
    0x20AC, 0x0000, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x0000, 0x017D, 0x0000,
    0x0000, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x0000, 0x017E, 0x0178,
};
// clang-format on
static_assert(std::size(Windows1250) == 0x80 && std::size(Windows1252) == FirstOfLatin1 - FirstOfWindows);

constexpr char32_t NoCharacter = 0xFFFF; // not allowed in XML

[[nodiscard]] char32_t windowsCharacter(XmlEncoding encoding, unsigned char byte)
{
    if (byte < FirstOfWindows || (encoding == XmlEncoding::Windows1252 && byte >= FirstOfLatin1))
        return byte;
    const char32_t character
        = (encoding == XmlEncoding::Windows1250 ? Windows1250 : Windows1252)[byte - FirstOfWindows];
    return character != 0 ? character : NoCharacter;
}

[[nodiscard]] std::string decodedWide(std::string_view bytes, std::size_t low)
{
    std::string text;
    char32_t lead = 0;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const char32_t unit = static_cast<unsigned char>(bytes[i + low])
            | static_cast<char32_t>(static_cast<unsigned char>(bytes[i + 1 - low])) << 8;
        if (unit >= 0xD800 && unit < 0xDC00) {
            lead = unit;
            continue;
        }
        const bool isTrail = unit >= 0xDC00 && unit < 0xE000;
        appendUtf8(isTrail ? 0x10000 + ((lead & 0x3FF) << 10) + (unit & 0x3FF) : unit, text);
    }
    return text;
}

} // namespace

XmlEncoding xmlEncoding(std::string_view name)
{
    struct Name
    {
        std::string_view text;
        XmlEncoding encoding;
    };
    constexpr Name Names[] = {{"iso-8859-1", XmlEncoding::Latin1}, {"us-ascii", XmlEncoding::Latin1},
        {"windows-1250", XmlEncoding::Windows1250}, {"cp1250", XmlEncoding::Windows1250},
        {"windows-1252", XmlEncoding::Windows1252}, {"cp1252", XmlEncoding::Windows1252}};
    for (const Name& known : Names) {
        if (equalsIgnoringCase(name, known.text))
            return known.encoding;
    }
    return XmlEncoding::Utf8;
}

bool isWindows(XmlEncoding encoding)
{
    return encoding == XmlEncoding::Windows1250 || encoding == XmlEncoding::Windows1252;
}

void fillWindowsMap(XmlEncoding encoding, int (&map)[256])
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        const char32_t character = windowsCharacter(encoding, static_cast<unsigned char>(byte));
        map[byte] = character == NoCharacter ? -1 : static_cast<int>(character);
    }
}

std::string decodedXml(std::string_view bytes, XmlEncoding encoding)
{
    if (encoding == XmlEncoding::Utf8)
        return std::string(bytes);
    if (encoding == XmlEncoding::Utf16Little || encoding == XmlEncoding::Utf16Big)
        return decodedWide(bytes, encoding == XmlEncoding::Utf16Little ? 0 : 1);
    std::string text;
    for (char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        appendUtf8(encoding == XmlEncoding::Latin1 ? byte : windowsCharacter(encoding, byte), text);
    }
    return text;
}

} // namespace mirn::zelsvg
