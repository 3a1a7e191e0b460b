// SPDX-License-Identifier: MIT
#include "benchmarks/results/pairs.h"

#include <algorithm>
#include <vector>

namespace zelbench {

namespace {

constexpr int FewestPairs = 5;
constexpr int MostPairs = 101;
constexpr double EnoughSeconds = 2.0; // of processor time, preparations included

double median(std::vector<double> values)
{
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double secondsOfTurn(const Side& side)
{
    if (side.prepare)
        side.prepare();
    if (side.times > 1)
        (void)side.act();
    double seconds = 0.0;
    for (int n = 0; n < side.times; ++n)
        seconds += side.act();
    if (side.restore)
        side.restore();
    return seconds / side.times;
}

} // namespace

void measureInTurns(benchmark::State& state, const Side& yardstick, const Side& subject)
{
    std::vector<double> times;
    std::vector<double> ratios;
    for (auto _ : state) {
        const double start = processorSeconds();
        const auto isEnough = [&] {
            const int pairs = static_cast<int>(ratios.size());
            return pairs >= MostPairs || (pairs >= FewestPairs && processorSeconds() - start > EnoughSeconds);
        };
        while (!isEnough()) {
            const double first = secondsOfTurn(yardstick);
            times.push_back(secondsOfTurn(subject));
            ratios.push_back(times.back() / first);
        }
        state.SetIterationTime(median(times));
    }
    if (!ratios.empty())
        state.counters["ratio"] = median(ratios);
}

} // namespace zelbench
