// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace mirn::zelchip {

class ProjectSession;

// Runs a script on a project without a window. Its output goes to the standard channels, an error to stderr. Returns
// the exit status: 0, or 1 after an error. A script that calls "exit" ends the program with its own status.
[[nodiscard]] int runBatch(std::unique_ptr<ProjectSession> session, const QString& scriptFile);

} // namespace mirn::zelchip
