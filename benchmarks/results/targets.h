// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

namespace zelbench {

// A limit that the view keeps with large drawings: a figure of one benchmark, or its ratio to what was measured in
// turns with it, that must not be exceeded.
struct Target
{
    enum class Unit { Ratio, Microseconds, Milliseconds, Seconds, Kilobytes, Count };

    static constexpr double None = -1; // no limit for drawings of that size

    const char* label;
    const char* benchmark;
    const char* counter; // a counter of the benchmark; empty for its time
    Unit unit;
    double at100k;
    double at1M;
    double at1200k = None;
    double at2300k = None;
};

[[nodiscard]] const std::vector<Target>& targets();

// Returns the limit for drawings of this size; most sizes have none.
[[nodiscard]] std::optional<double> limitOf(const Target& target, int elements);

} // namespace zelbench
