// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {
class ReferenceEngine;
}

// Runs a command of the chip view on the design:
//     zel_resource place -rsc {NAME} -id SITE
//     zel_resource reset -ip {NAME}
//     zel_resource remove -ip {NAME}
// Returns an empty text on success, otherwise a sentence that says why nothing was changed. A host with a Tcl
// interpreter does not need this function: the commands are Tcl.
[[nodiscard]] QString runCommand(const QString& command, mirn::zelengine::ReferenceEngine& engine);
