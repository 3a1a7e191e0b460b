// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {

class Device;

// Reads a device file (docs/schemas/device.schema.json). Nothing, with a message in *error, when it cannot be read or
// contradicts itself; what is merely unknown goes to *warnings. Neither pointer may be null.
[[nodiscard]] std::optional<Device> readDevice(const QString& fileName, QString* error, QStringList* warnings);

} // namespace mirn::zelengine
