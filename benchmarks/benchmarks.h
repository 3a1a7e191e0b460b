// SPDX-License-Identifier: MIT
#pragma once

// Each function registers the benchmarks of one area for a drawing of `elements` elements. resultrows.h says which of
// them the closing table compares.
namespace zelbench {

void addDesignBenchmarks(int elements);
void addFilterBenchmarks(int elements);
void addLoadingBenchmarks(int elements);
void addPaintingBenchmarks(int elements);
void addPeerBenchmarks(int elements);
void addPickingBenchmarks(int elements);
void addPlanningBenchmarks(int elements);
void addProgramBenchmarks(int elements);
void addResourceBenchmarks(int elements);
void addStateBenchmarks(int elements);
void addWindowChecks(int elements);

} // namespace zelbench
