// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>
#include <QSet>
#include <QString>

#include <optional>
#include <string>

namespace mirn::zelchipview {

// The element ids of each kind, as the chip's filter file lists them.
using FilterKinds = QMap<QString, QSet<int>>;

// Reads a filter file (path in the file system's encoding). It has one `"Kind" id` per line; other lines are skipped.
// Returns nothing if the file cannot be opened.
[[nodiscard]] std::optional<FilterKinds> readFilterFile(const std::string& path);

// Adds one line, without its line end, to the kinds. A line without a quote or without a blank changes nothing; an id
// that is not a number counts as 0.
void addFilterLine(const QByteArray& line, FilterKinds& kinds);

} // namespace mirn::zelchipview
