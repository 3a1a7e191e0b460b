// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {

class Device;

// Reads a device file (docs/schemas/device.schema.json). Returns nothing, with a message in *error, if the file cannot
// be read or contradicts itself; unknown keys are only added to *warnings. Neither pointer may be null.
[[nodiscard]] std::optional<Device> readDevice(const QString& fileName, QString* error, QStringList* warnings);

} // namespace mirn::zelengine
