// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace zelsvg {

class Diagnostics;
class FlatPath;

// Draws the path data `text` (the attribute d) up to its end or the first mistake in it, which is warned of.
void readPathData(std::string_view text, FlatPath& path, Diagnostics& diagnostics);

// The same for a list of corners (the attribute points).
void readPoints(std::string_view text, FlatPath& path, Diagnostics& diagnostics);

} // namespace zelsvg
