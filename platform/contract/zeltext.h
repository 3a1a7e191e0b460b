// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <algorithm>
#include <string>

// These are the only conversions between QString and the 8-bit texts (ISO 8859-1) of the contract. Characters beyond
// U+00FF become '?'. File names are bytes in the file system's encoding and must not be converted here.

[[nodiscard]] inline std::string toEngineText(const QString& text)
{
    std::string bytes(static_cast<std::size_t>(text.size()), '\0');
    std::transform(text.begin(), text.end(), bytes.begin(),
        [](QChar c) { return c.unicode() <= 0xff ? static_cast<char>(c.unicode()) : '?'; });
    return bytes;
}

[[nodiscard]] inline QString fromEngineText(const std::string& text)
{
    return QString::fromLatin1(text.data(), static_cast<int>(text.size()));
}

// Null becomes an empty text.
[[nodiscard]] inline QString fromEngineText(const char* text)
{
    return QString::fromLatin1(text);
}
