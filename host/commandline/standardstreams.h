// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QByteArray>
#include <QString>

namespace mirn::zelchip {

// Writes to the program's output or error stream in the locale's encoding, and flushes it.
void writeToStream(const QString& text, TclInterpreter::Channel channel);

// Writes these bytes to the program's output. Returns false, with errno, if not all of them could be written.
[[nodiscard]] bool writeToOutput(const QByteArray& bytes);

// Suppresses Qt's messages about missing parts of a desktop session, which a container or the offscreen platform does
// not have. The user can do nothing about them. All other messages go where they went before.
void silencePlatformMessages();

} // namespace mirn::zelchip
