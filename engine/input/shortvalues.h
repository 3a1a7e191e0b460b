// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {

// Returns a message about a file with the quoted values in it shortened: a value may be as long as the file, and so may
// the list of what is expected.
[[nodiscard]] QString withShortValues(const QString& message);

} // namespace mirn::zelengine
