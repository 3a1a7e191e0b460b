// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/autoplacetcl.h"
#include "host/tcl/tclinterpreter.h"

namespace mirn::zelchip {

class DesignEditor;

// The Tcl commands on resources and settings: they read their words and call the DesignEditor. Their error messages are
// sentences for users. designcommands.h builds the texts of such commands.

// Returns the command that carries out changes, which are all that a journal may hold: zel_resource place, reset,
// remove, restore, lock, unlock and configure with a value, and zel_setting with a value. Its words begin with the
// command's name and pass through no interpreter. The editor must outlive the function.
[[nodiscard]] TclInterpreter::Command changeCommand(DesignEditor& editor);

// Adds the whole of zel_resource and zel_setting, undo and redo. The editor must outlive the interpreter. Without
// positions the automatic placement takes all sites for equally near.
void addDesignCommands(TclInterpreter& interpreter, DesignEditor& editor, PositionSource positions = {});

} // namespace mirn::zelchip
