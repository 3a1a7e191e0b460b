// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

namespace zelbench {

struct Options
{
    std::vector<int> sizes; // of the drawings, in elements; ascending, and empty if none were given
    std::vector<int> programSizes; // sizes of the drawings that only the whole program opens
    bool hasPeer = false; // measures another viewer as well
};

// Returns the options of zelbench itself and removes them from the arguments. Returns nothing if a size is not a number
// from 1000 to ten million.
[[nodiscard]] std::optional<Options> takeOptions(int& argc, char** argv);

// Printed for --help.
void printUsage();

} // namespace zelbench
