// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zelchip {

class DesignEditor;
class TclInterpreter;

// The commands on resources and settings. Their errors are sentences for people.

// Those that change something, which are all that a journal may hold: zel_resource place, reset, remove, restore,
// configure with a value, and zel_setting with a value. The editor must outlive the interpreter.
void addChangeCommands(TclInterpreter& interpreter, DesignEditor& editor);

// The whole of zel_resource, zel_setting, undo and redo.
void addDesignCommands(TclInterpreter& interpreter, DesignEditor& editor);

} // namespace mirn::zelchip
