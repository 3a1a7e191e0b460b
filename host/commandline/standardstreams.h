// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QString>

namespace mirn::zelchip {

// Writes to the program's output or error stream in the locale's encoding, and flushes it.
void writeToStream(const QString& text, TclInterpreter::Channel channel);

} // namespace mirn::zelchip
