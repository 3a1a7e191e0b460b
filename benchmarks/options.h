// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

namespace zelbench {

// The sizes of `--sizes=10000,100000`, which is taken out of the arguments; 10 k and 100 k without it. Nothing when a
// size is no number from 1000 up to ten million.
[[nodiscard]] std::optional<std::vector<int>> takeSizes(int& argc, char** argv);

// Printed for --help.
void printUsage();

} // namespace zelbench
