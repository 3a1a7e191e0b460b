// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

namespace mirn::zelchip {

class Arguments;

// Carries out "zel_project import" while the program stays responsive. Cancelling the script cancels the import.
[[nodiscard]] TclResult importTables(TclInterpreter& interpreter, const Arguments& arguments);

} // namespace mirn::zelchip
