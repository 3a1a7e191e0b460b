// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchip {

// Returns a folder in which the user can work on the sample project. The shipped project is writable only in a build
// folder. Otherwise it is copied once below `userFolder`, and the copy is the user's from then on. If it cannot be
// copied, this returns the shipped project, which can then only be looked at.
[[nodiscard]] QString sampleProject(const QString& shipped, const QString& userFolder);

} // namespace mirn::zelchip
