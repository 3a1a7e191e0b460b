// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/screen/gestures.h"
#include "benchmarks/screen/shownprogram.h"

#include <vector>

namespace zelscreen {

// What one pass over all gestures has found.
struct Pass
{
    Measurements measurements;
    ShownProgram::End end;
};

// Returns the figures that have targets: the 99th percentiles of all gestures together, in seconds, and what quitting
// has cost.
struct Figures
{
    double first = 0.0;
    double last = 0.0;
    double quitting = 0.0;
};
[[nodiscard]] Figures figuresOf(const Pass& pass);

// Returns whether each target is met by one of the passes.
[[nodiscard]] bool areTargetsMet(const std::vector<Pass>& passes);

// Prints a row for each kind of gesture of the last pass, and the targets.
void printLatencies(int elements, const std::vector<Pass>& passes);

} // namespace zelscreen
