// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {

// The types of the design's resources. The numbers are the contract's kind codes.
enum class ResourceType {
    Folder = -1, // holds others, cannot be placed
    Ip = 0,
    DcuChannel = 1,
    ExtRef = 2,
    Pll = 3,
    Uvccio = 4,
};

// Folders only hold others, and an IP is placed by its channels.
[[nodiscard]] constexpr bool hasOwnSite(ResourceType type)
{
    return type != ResourceType::Folder && type != ResourceType::Ip;
}

// The names used in files, in the order of the codes.
[[nodiscard]] const QStringList& resourceTypeNames();

// Returns a null text for a folder.
[[nodiscard]] QString resourceTypeName(ResourceType type);

[[nodiscard]] std::optional<ResourceType> resourceTypeFromName(const QString& name);

} // namespace mirn::zelengine
