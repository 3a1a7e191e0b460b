// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchip {

class TclInterpreter;

// Adds "help", which writes to the standard output: what commands there are, or how one of them is called.
void addHelpCommand(TclInterpreter& interpreter);

// Returns the reference of all commands as Markdown. docs/commands.md is this text.
[[nodiscard]] QString commandReference();

} // namespace mirn::zelchip
