// SPDX-License-Identifier: MIT
#include "importer/namecheck.h"

#include "engine/model/resourcename.h"
#include "importer/translation.h"

#include <algorithm>

namespace mirn::zelimporter {

namespace {

// Most names are nothing else, which is quickly seen.
bool isPlain(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '.'
            || c == '-';
    });
}

QString textOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

QString siteNameError(std::string_view name)
{
    // A slash does no harm in the name of a site.
    return isPlain(name) ? QString()
                         : zelengine::resourceNameError(textOf(name).replace(QLatin1Char('/'), QLatin1Char('_')));
}

QString resourceNameError(std::string_view name)
{
    return isPlain(name) ? QString() : zelengine::resourceNameError(textOf(name));
}

QString wordError(std::string_view text)
{
    return isPlain(text) ? QString() : zelengine::textError(textOf(text));
}

QString noteError(std::string_view text)
{
    const bool isClean = std::all_of(text.begin(), text.end(),
        [](char c) { return static_cast<unsigned char>(c) >= 0x20 || c == '\n' || c == '\r' || c == '\t'; });
    return isClean ? QString() : tr("the text holds a control character");
}

} // namespace mirn::zelimporter
