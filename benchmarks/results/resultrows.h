// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

namespace zelbench {

// A line of the closing table: a result and the benchmark that it is compared with.
struct ResultRow
{
    const char* label;
    const char* benchmark;
    const char* counter; // a counter of the benchmark; empty for its time
    const char* yardstick; // the benchmark whose time is ratio 1; empty for none
};

// A line below the table: a figure that is not a time.
struct FactRow
{
    const char* label;
    const char* benchmark;
    const char* counter;
};

[[nodiscard]] const std::vector<ResultRow>& resultRows();
[[nodiscard]] const std::vector<FactRow>& factRows();

} // namespace zelbench
