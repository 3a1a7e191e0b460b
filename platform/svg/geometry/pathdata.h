// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace mirn::zelsvg {

class Diagnostics;
class FlatPath;

// Adds the path data `text` (the attribute d) up to its end or its first mistake; a mistake is warned about.
void readPathData(std::string_view text, FlatPath& path, Diagnostics& diagnostics);

// Does the same for a list of points (the attribute points).
void readPoints(std::string_view text, FlatPath& path, Diagnostics& diagnostics);

} // namespace mirn::zelsvg
