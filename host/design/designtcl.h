// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

namespace mirn::zelchip {

class DesignEditor;

// The commands on resources and settings. Their errors are sentences for people.

// Those that change something, which are all that a journal may hold: zel_resource place, reset, remove, restore,
// configure with a value, and zel_setting with a value. The words begin with the command's name; no interpreter sees
// them. The editor must outlive the function.
[[nodiscard]] TclInterpreter::Command changeCommand(DesignEditor& editor);

// The editor must outlive the interpreter. The whole of zel_resource, zel_setting, undo and redo.
void addDesignCommands(TclInterpreter& interpreter, DesignEditor& editor);

} // namespace mirn::zelchip
