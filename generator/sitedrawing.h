// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace mirn::zeldevicegenerator {

// Returns a drawing of a device's sites as other tools write it: `sites` rects in a square grid, each with a name, an
// element id, a class of the style sheet for its fill, and a stroke. The same number makes the same bytes.
[[nodiscard]] std::string siteDrawing(int sites);

} // namespace mirn::zeldevicegenerator
