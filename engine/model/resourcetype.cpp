// SPDX-License-Identifier: MIT
#include "engine/model/resourcetype.h"

namespace mirn::zelengine {

const QStringList& resourceTypeNames()
{
    static const QStringList names{QStringLiteral("IP"), QStringLiteral("DCUCHANNEL"), QStringLiteral("EXTREF"),
        QStringLiteral("PLL"), QStringLiteral("UVCCIO")};
    return names;
}

QString resourceTypeName(ResourceType type)
{
    return type == ResourceType::Folder ? QString() : resourceTypeNames().at(static_cast<int>(type));
}

std::optional<ResourceType> resourceTypeFromName(const QString& name)
{
    const int index = static_cast<int>(resourceTypeNames().indexOf(name));
    if (index < 0)
        return std::nullopt;
    return static_cast<ResourceType>(index);
}

} // namespace mirn::zelengine
