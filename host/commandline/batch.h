// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace mirn::zelchip {

class ProjectSession;

// What follows the script of a batch.
enum class BatchEnd {
    Plain,
    Checks, // lists the problems of the project that is then open on stderr
};

// Runs a script on a project without a window; an empty name runs none. Its output goes to the standard channels, an
// error to stderr. Returns the exit status: 0, or 1 after an error of the script or if the check finds one. A script
// that calls "exit" ends the program with its own status.
[[nodiscard]] int runBatch(std::unique_ptr<ProjectSession> session, const QString& scriptFile, BatchEnd end);

} // namespace mirn::zelchip
