// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace mirn::zeldevicegenerator {

// Returns a synthetic drawing for measurements: `elements` graphic elements in the cells of a square grid. 80 % are
// rects, 10 % lines, 5 % polygons and 5 % texts, mixed and of different sizes and colours. The elements are distributed
// over the layers in turn, and each layer appears at a higher scale than the one before. Element ids count from 1. The
// same arguments produce the same bytes on every machine.
[[nodiscard]] std::string benchmarkDrawing(int elements, int layers = 1);

// The side of the square drawing, in scene units.
inline constexpr double BenchmarkSize = 1000;

} // namespace mirn::zeldevicegenerator
