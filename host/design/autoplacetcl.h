// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/placementsearch.h"
#include "host/tcl/arguments.h"

#include <functional>

namespace mirn::zelchip {

class DesignEditor;
class TclInterpreter;

// Returns where the sites are at present; may be empty or return an empty function if nobody knows.
using PositionSource = std::function<zelengine::PlacementSearch::Position()>;

// Returns the handler of "zel_resource place -auto". While it searches, the interpreter stays responsive and can be
// cancelled. Interpreter and editor must outlive the handler.
[[nodiscard]] CommandHandler autoPlaceHandler(
    TclInterpreter& interpreter, DesignEditor& editor, PositionSource positions);

} // namespace mirn::zelchip
