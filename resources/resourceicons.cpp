// SPDX-License-Identifier: MIT
#include "resources/resourceicons.h"

namespace mirn::zelchipview {

namespace {

// The colour of an icon says what the resource is, so a style must not tint the icon of a selected row.
QIcon load(const char* name)
{
    const QString file = QStringLiteral(":/images/%1.png").arg(QLatin1String(name));
    QIcon icon(file);
    icon.addFile(file, QSize(), QIcon::Selected);
    return icon;
}

} // namespace

ResourceIcons::ResourceIcons()
    : m_fallback(load("design"))
{
    m_icons.emplace("ZEL", load("design"));
    m_icons.emplace("IP", load("ip"));
    m_icons.emplace("DCUCHANNEL", load("dualchannel"));
    m_icons.emplace("EXTREF", load("extref"));
    m_icons.emplace("PLL", load("dcupll"));
    // I/O supplies have no icon of their own on purpose.
    m_icons.emplace("UVCCIO", load("dualchannel"));
}

QIcon& ResourceIcons::icon(const std::string& type)
{
    const auto found = m_icons.find(type);
    return found != m_icons.end() ? found->second : m_fallback;
}

} // namespace mirn::zelchipview
