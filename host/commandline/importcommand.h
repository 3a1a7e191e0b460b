// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importoptions.h"

#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// The request of "zelchip import".
struct ImportCommand
{
    zelimporter::ImportOptions options;
    bool printsHelp = false;
    QString error; // one sentence about the arguments; empty if they are right
};

// Parses the arguments behind "import". Needs no application object.
[[nodiscard]] ImportCommand parseImportCommand(const QStringList& arguments);

// The text ends with a line break.
[[nodiscard]] QString importHelpText();

// Makes the project, says on stderr what it does, and returns the exit status. An interrupt ends it and leaves nothing
// behind.
[[nodiscard]] int runImport(const zelimporter::ImportOptions& options);

} // namespace mirn::zelchip
