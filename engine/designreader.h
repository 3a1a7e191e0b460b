// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {

class Design;
class Device;

// Reads a design file (docs/schemas/design.schema.json) for a device. Returns nothing, with a message in *error, if the
// file cannot be read, contradicts itself or breaks a placement rule of the device. Neither pointer may be null.
[[nodiscard]] std::optional<Design> readDesign(
    const QString& fileName, const Device& device, QString* error, QStringList* warnings);

} // namespace mirn::zelengine
