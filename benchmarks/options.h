// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

namespace zelbench {

struct Options
{
    std::vector<int> sizes{10000, 100000}; // of the drawings, in elements
    bool hasPeer = false; // measures another viewer as well
};

// What zelbench itself understands of its arguments, which are taken out of them. Nothing when a size is no number from
// 1000 up to ten million.
[[nodiscard]] std::optional<Options> takeOptions(int& argc, char** argv);

// Printed for --help.
void printUsage();

} // namespace zelbench
