// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importoptions.h"

#include <QString>

namespace mirn::zelimporter {

// Read the options of the import as people write them. All return an empty text for success, else what was expected.

// Reads "role=COLUMN" items, separated by commas, into the options; "resources.name=NET" names the table as well, which
// is that of the sites otherwise.
[[nodiscard]] QString readColumnOption(const QString& text, ImportOptions& options);
// The same for one character or "tab", for "NAME" or "NAME/SCALE", and for "up" or "down".
[[nodiscard]] QString readSeparatorOption(const QString& text, ImportOptions& options);
[[nodiscard]] QString readUnitOption(const QString& text, ImportOptions& options);
[[nodiscard]] QString readAxisOption(const QString& text, ImportOptions& options);

} // namespace mirn::zelimporter
