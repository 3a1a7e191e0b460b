// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourcetype.h"

#include <QString>
#include <QStringList>

namespace mirn::zelengine {

class JsonNode;

// The members of a resource in a design file that are the same for all types; no property or parameter has their names.
[[nodiscard]] const QStringList& resourceMembers();

// Reads the types of a device and the rules about them (docs/schemas/device.schema.json). An error is left in the
// report of the nodes, and the types are then incomplete.
[[nodiscard]] ResourceTypes readResourceTypes(const JsonNode& types, const JsonNode& rules);

} // namespace mirn::zelengine
