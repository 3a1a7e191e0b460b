// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace soak {

// What makes room scarce for a program.
struct Room
{
    std::function<void(qint64 bytes, qint64 process)> leave; // below 0 bytes: enough; empty: room cannot be made scarce
    QByteArray complaint; // in the system's words
};

// A small file system in this folder, which nobody else sees and which ends with this process. Needs to be root.
[[nodiscard]] Room smallDisk(const QString& folder);

// The largest size that the program's files may have.
[[nodiscard]] Room fileSizeLimit();

} // namespace soak
