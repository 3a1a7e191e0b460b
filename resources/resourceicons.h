// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

#include <map>
#include <string>

namespace mirn::zelchipview {

// The icons of the resource kinds, from the component's resource file. The tree model owns them.
class ResourceIcons final
{
public:
    ResourceIcons();

    // Returns the icon of a resource kind, which is a text of the contract; the design's icon for an unknown kind.
    // Valid as long as this object.
    [[nodiscard]] QIcon& icon(const std::string& type);

private:
    std::map<std::string, QIcon> m_icons;
    QIcon m_fallback;
};

} // namespace mirn::zelchipview
