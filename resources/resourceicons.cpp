// SPDX-License-Identifier: MIT
#include "resources/resourceicons.h"

namespace mirn::zelchipview {

ResourceIcons::ResourceIcons()
    : m_fallback(QStringLiteral(":/images/design.png"))
{
    m_icons.insert(QStringLiteral("ZEL"), QIcon(QStringLiteral(":/images/design.png")));
    m_icons.insert(QStringLiteral("IP"), QIcon(QStringLiteral(":/images/ip.png")));
    m_icons.insert(QStringLiteral("DCUCHANNEL"), QIcon(QStringLiteral(":/images/dualchannel.png")));
    m_icons.insert(QStringLiteral("EXTREF"), QIcon(QStringLiteral(":/images/extref.png")));
    m_icons.insert(QStringLiteral("PLL"), QIcon(QStringLiteral(":/images/dcupll.png")));
    // I/O supplies have no icon of their own on purpose.
    m_icons.insert(QStringLiteral("UVCCIO"), QIcon(QStringLiteral(":/images/dualchannel.png")));
}

QIcon& ResourceIcons::icon(const QString& type)
{
    const auto found = m_icons.find(type);
    return found != m_icons.end() ? found.value() : m_fallback;
}

} // namespace mirn::zelchipview
