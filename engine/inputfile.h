// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace mirn::zelengine {

// Reading files that people name and that may therefore be anything: a pipe or a device might never end, and a file
// might be larger than the memory. A link is followed. Every function says in *error why it failed, in words that go
// behind the file's name; the pointer must not be null.

// The bytes that a project, device or design file may have.
constexpr qint64 LargestJsonFile = qint64(1) << 30;

// An open file descriptor that the caller closes, or -1 where the file is no regular one or larger than this.
[[nodiscard]] int openInputFile(const QString& fileName, qint64 mostBytes, QString* error);

// The whole content.
[[nodiscard]] std::optional<QByteArray> readInputFile(const QString& fileName, qint64 mostBytes, QString* error);

// What openInputFile() would complain of; empty where it would not.
[[nodiscard]] QString objectionToInputFile(const QString& fileName, qint64 mostBytes);

} // namespace mirn::zelengine
