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
    m_icons.insert(QStringLiteral("ZEL"), load("design"));
    m_icons.insert(QStringLiteral("IP"), load("ip"));
    m_icons.insert(QStringLiteral("DCUCHANNEL"), load("dualchannel"));
    m_icons.insert(QStringLiteral("EXTREF"), load("extref"));
    m_icons.insert(QStringLiteral("PLL"), load("dcupll"));
    // I/O supplies have no icon of their own on purpose.
    m_icons.insert(QStringLiteral("UVCCIO"), load("dualchannel"));
}

QIcon& ResourceIcons::icon(const QString& type)
{
    const auto found = m_icons.find(type);
    return found != m_icons.end() ? found.value() : m_fallback;
}

} // namespace mirn::zelchipview
