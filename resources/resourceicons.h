// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QMap>
#include <QString>

namespace mirn::zelchipview {

// The icons of the resource kinds, from the component's resource file. The tree model owns them.
class ResourceIcons final
{
public:
    ResourceIcons();

    // Returns the icon of a resource kind; the design's icon for an unknown kind. Valid as long as this object.
    [[nodiscard]] QIcon& icon(const QString& type);

private:
    QMap<QString, QIcon> m_icons;
    QIcon m_fallback;
};

} // namespace mirn::zelchipview
