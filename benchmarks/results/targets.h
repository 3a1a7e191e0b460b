// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

namespace zelbench {

// A limit that the view keeps with large drawings: a figure of one benchmark, or its ratio to another one of the same
// run, that must not be exceeded.
struct Target
{
    enum class Unit { Ratio, Microseconds, Seconds, Kilobytes, Count };

    const char* label;
    const char* benchmark;
    const char* counter; // a counter of the benchmark; empty for its time
    const char* yardstick; // the benchmark whose time is ratio 1; empty for none
    Unit unit;
    double at100k;
    double at1M;
};

[[nodiscard]] const std::vector<Target>& targets();

// Returns the limit for drawings of 100,000 or 1,000,000 elements; there are no targets for other sizes.
[[nodiscard]] std::optional<double> limitOf(const Target& target, int elements);

} // namespace zelbench
