// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QString>

namespace mirn::zelchip {

// Writes to the program's output or error stream in the locale's encoding, and flushes it.
void writeToStream(const QString& text, TclInterpreter::Channel channel);

// Suppresses Qt's messages about missing parts of a desktop session, which a container or the offscreen platform does
// not have. The user can do nothing about them. All other messages go where they went before.
void silencePlatformMessages();

} // namespace mirn::zelchip
