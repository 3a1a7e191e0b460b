// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QString>

namespace mirn::zelchipview {

// Returns the text of a rule or an error as it stands in a window, with a capital letter at its beginning. One that
// begins with the path of a resource, as in "top/ip is fixed", stays as it is.
[[nodiscard]] ZELCHIPGUI_EXPORT QString asSentence(const QString& text);

} // namespace mirn::zelchipview
