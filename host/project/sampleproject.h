// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchip {

// Where the sample project can be worked on. The shipped one has a folder for that only where the program was built; an
// installed one is copied below `userFolder`, once, and that copy is the user's from then on. When it cannot be made,
// the shipped one, at which one can only look.
[[nodiscard]] QString sampleProject(const QString& shipped, const QString& userFolder);

} // namespace mirn::zelchip
