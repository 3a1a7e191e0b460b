// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelengine {

// Why a text cannot cross to the chip view and back; empty when it can. The contract's texts are ISO 8859-1, and a
// control character would end up in the middle of a command.
[[nodiscard]] QString complaintAboutText(const QString& text);

// The same for the name of a resource, which in addition is one component of a slash-separated path and must come
// through Tcl unchanged when the path is put between braces.
[[nodiscard]] QString complaintAboutResourceName(const QString& name);

} // namespace mirn::zelengine
