// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <optional>
#include <string>

namespace zelbench {

// What the benchmarks of a run have measured, the last time where they were run more than once.
class Results
{
public:
    struct Result
    {
        double seconds = 0.0;
        std::map<std::string, double> counters;
    };

    // `name` is the benchmark's with the size of its drawing; see benchmarkName().
    void keep(const std::string& name, Result result) { m_results[name] = std::move(result); }

    // Returns null if this benchmark was not run at this size.
    [[nodiscard]] const Result* find(const char* benchmark, int elements) const;

    // Returns a counter of the benchmark, or its time if the counter's name is empty. Nothing if there is no such
    // result.
    [[nodiscard]] std::optional<double> figure(const char* benchmark, const char* counter, int elements) const;

    // Returns the ratio to the yardstick: the one that was measured in turns with it, else that of two results.
    [[nodiscard]] std::optional<double> ratio(
        const char* benchmark, const char* counter, const char* yardstick, int elements) const;

private:
    std::map<std::string, Result> m_results;
};

} // namespace zelbench
