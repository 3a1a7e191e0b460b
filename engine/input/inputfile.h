// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace mirn::zelengine {

// Functions that read files named by users. Such a file may be anything: a pipe or a device might never end, and a file
// might be larger than the memory. Symbolic links are followed. Every function with *error puts its reason there,
// worded to follow the file's name; the pointer must not be null.

// The largest size of a project, device or design file, in bytes.
constexpr qint64 LargestJsonFile = qint64(1) << 30;

// Returns a file descriptor that the caller closes, or -1 if the file cannot be opened, is not a regular file or is
// larger than this.
[[nodiscard]] int openInputFile(const QString& fileName, qint64 mostBytes, QString* error);

// Returns the whole content.
[[nodiscard]] std::optional<QByteArray> readInputFile(const QString& fileName, qint64 mostBytes, QString* error);

// Returns the error that openInputFile() would report; empty if it would succeed.
[[nodiscard]] QString inputFileError(const QString& fileName, qint64 mostBytes);

} // namespace mirn::zelengine
