// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QString>

namespace mirn::zelchip {

// Writes to the program's own output or error stream, at once and in the locale's encoding.
void writeToStream(const QString& text, TclInterpreter::Channel channel);

} // namespace mirn::zelchip
