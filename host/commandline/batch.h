// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <memory>

namespace mirn::zelchip {

class ProjectSession;

// Runs a script on a project without a window: what it writes goes to the standard channels, an error to stderr. Gives
// the exit status: 0, 1 after an error, or what the script gave to "exit".
[[nodiscard]] int runBatch(std::unique_ptr<ProjectSession> session, const QString& scriptFile);

} // namespace mirn::zelchip
