// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace mirn::zeldevicegenerator {

// A synthetic drawing for measurements: `elements` graphic elements in cells of a square grid, of which 80 % are rects,
// 10 % lines, 5 % polygons and 5 % texts, mixed and all of different size and colour. With several layers the elements
// are dealt out in turn, and each layer after the first appears at a higher scale than the one before. Element ids
// count from 1. The same arguments give the same bytes everywhere.
[[nodiscard]] std::string benchmarkDrawing(int elements, int layers = 1);

// Side of the square drawing in scene units.
inline constexpr double BENCHMARK_SIZE = 1000;

} // namespace mirn::zeldevicegenerator
