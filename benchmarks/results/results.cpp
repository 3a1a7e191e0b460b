// SPDX-License-Identifier: MIT
#include "benchmarks/results/results.h"

#include "benchmarks/results/measure.h"

namespace zelbench {

const Results::Result* Results::find(const char* benchmark, int elements) const
{
    const auto found = m_results.find(benchmarkName(benchmark, elements));
    return found != m_results.end() ? &found->second : nullptr;
}

std::optional<double> Results::figure(const char* benchmark, const char* counter, int elements) const
{
    const Result* found = find(benchmark, elements);
    if (!found)
        return std::nullopt;
    if (!*counter)
        return found->seconds;
    const auto value = found->counters.find(counter);
    return value != found->counters.end() ? std::optional<double>(value->second) : std::nullopt;
}

std::optional<double> Results::ratio(
    const char* benchmark, const char* counter, const char* yardstick, int elements) const
{
    const std::string name = *counter ? std::string("ratio ") + counter : std::string("ratio");
    const std::optional<double> inTurns = figure(benchmark, name.c_str(), elements);
    if (inTurns)
        return inTurns;
    const std::optional<double> subject = figure(benchmark, counter, elements);
    const Result* compared = find(yardstick, elements);
    return subject && compared ? std::optional<double>(*subject / compared->seconds) : std::nullopt;
}

} // namespace zelbench
