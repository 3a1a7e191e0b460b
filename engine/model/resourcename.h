// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {

// Returns why a text cannot cross to the chip view and back; empty if it can. The contract's texts are ISO 8859-1, and
// a control character would end up in the middle of a command.
[[nodiscard]] QString textError(const QString& text);

// Returns the same for the name of a resource, which is also one component of a slash-separated path and must pass
// through Tcl unchanged when the path is put between braces.
[[nodiscard]] QString resourceNameError(const QString& name);

} // namespace mirn::zelengine
