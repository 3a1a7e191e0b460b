// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/results/paintcounter.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <string>
#include <utility>
#include <vector>

// Each benchmark times by hand the part that counts and repeats it; the table takes the medians of the repetitions,
// unless takeSmallest() says otherwise. What is compared with a yardstick within a target is measured by pairs.h.
// Time is the processor time of the process, with all of its threads and the system's work for it. On a busy machine it
// varies less than the wall-clock time, and on an idle one it is the same, since nothing measured here waits.
namespace zelbench {

constexpr double ShortestRun = 0.05; // the least seconds that one repetition lasts
constexpr int Repetitions = 5;
constexpr int FewRepetitions = 3; // for benchmarks that last long and vary little
constexpr int ManyRepetitions = 20; // of which the smallest counts
constexpr char SmallestName[] = "smallest";

// Returns the name under which a result is kept: the benchmark and the size of its drawing.
[[nodiscard]] inline std::string benchmarkName(const std::string& what, int elements)
{
    return what + '/' + std::to_string(elements);
}

// Returns the function that fails in all repetitions after the first one in which it failed: Google Benchmark 1.7 reads
// a pointer that was never set if the first repetition failed and two others did not.
template <typename Function> auto failingForGood(Function function)
{
    return [function = std::move(function), hasFailed = false](benchmark::State& state) mutable {
        if (hasFailed) {
            state.SkipWithError("an earlier repetition failed");
            return;
        }
        function(state);
        hasFailed = state.error_occurred();
    };
}

// Adds a benchmark with as many iterations as ShortestRun needs.
template <typename Function> benchmark::internal::Benchmark* add(const char* what, int elements, Function function)
{
    return benchmark::RegisterBenchmark(benchmarkName(what, elements).c_str(), failingForGood(std::move(function)))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(ShortestRun)
        ->Repetitions(Repetitions);
}

// Adds a benchmark with a fixed number of iterations, because each iteration leaves more work for the next.
template <typename Function>
benchmark::internal::Benchmark* addCounted(const char* what, int elements, int iterations, Function function)
{
    return benchmark::RegisterBenchmark(benchmarkName(what, elements).c_str(), failingForGood(std::move(function)))
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(iterations)
        ->Repetitions(Repetitions);
}

// Has the table take the smallest of many repetitions instead of the median of a few, for what takes microseconds and
// is compared with nothing: whatever else the machine does only ever adds to it.
inline benchmark::internal::Benchmark* takeSmallest(benchmark::internal::Benchmark* added)
{
    const auto smallest
        = [](const std::vector<double>& values) { return *std::min_element(values.begin(), values.end()); };
    return added->Repetitions(ManyRepetitions)->ComputeStatistics(SmallestName, smallest);
}

[[nodiscard]] inline double processorSeconds()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

// A painting benchmark is worthless if nothing was painted, or something twice.
inline void checkPaintedOnce(benchmark::State& state, const PaintCounter::Count& painted)
{
    if (painted.paints != 1)
        state.SkipWithError("not painted exactly once");
    state.counters["pixels"] = painted.pixels;
}

// For what several threads do at a time: means something on an idle machine only.
template <typename Action> [[nodiscard]] double wallSecondsOf(Action&& action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

template <typename Action> [[nodiscard]] double secondsOf(Action&& action)
{
    const double start = processorSeconds();
    action();
    return processorSeconds() - start;
}

} // namespace zelbench
