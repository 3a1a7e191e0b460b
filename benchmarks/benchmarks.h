// SPDX-License-Identifier: MIT
#pragma once

// The benchmarks by area. Each function registers those of one area for a drawing of `elements` elements; resultrows.h
// says which of them the closing table sets against each other.
namespace zelbench {

void addDesignBenchmarks(int elements);
void addLoadingBenchmarks(int elements);
void addPaintingBenchmarks(int elements);
void addPeerBenchmarks(int elements);
void addPickingBenchmarks(int elements);
void addResourceBenchmarks(int elements); // last of those on the window: its rows stay in the tree
void addStateBenchmarks(int elements);
void addWindowChecks(int elements);

} // namespace zelbench
