// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/paintcounter.h"

#include <benchmark/benchmark.h>

#include <ctime>
#include <string>
#include <utility>

// How the measurements are taken: each benchmark times by hand what counts and repeats it; the table takes medians of
// the repetitions. Time is processor time of the process, all of its threads and the system's work for it: on a machine
// that does other things as well it varies less than the time on the wall, and on an idle one it is the same, since
// nothing measured here waits.
namespace zelbench {

constexpr double ShortestRun = 0.05; // seconds that one repetition lasts at least
constexpr int Repetitions = 5;
constexpr int FewRepetitions = 3; // for what lasts long and varies little

// A benchmark and the size of its drawing: what the results are kept by.
[[nodiscard]] inline std::string benchmarkName(const std::string& what, int elements)
{
    return what + '/' + std::to_string(elements);
}

// Takes as many iterations as ShortestRun needs.
template <typename Function> benchmark::internal::Benchmark* add(const char* what, int elements, Function function)
{
    return benchmark::RegisterBenchmark(benchmarkName(what, elements).c_str(), std::move(function))
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->MinTime(ShortestRun)
        ->Repetitions(Repetitions);
}

// For what leaves more and more to do when it is repeated without end.
template <typename Function>
benchmark::internal::Benchmark* addCounted(const char* what, int elements, int iterations, Function function)
{
    return benchmark::RegisterBenchmark(benchmarkName(what, elements).c_str(), std::move(function))
        ->UseManualTime()
        ->Unit(benchmark::kMicrosecond)
        ->Iterations(iterations)
        ->Repetitions(Repetitions);
}

[[nodiscard]] inline double processorSeconds()
{
    timespec used{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
    return static_cast<double>(used.tv_sec) + static_cast<double>(used.tv_nsec) * 1e-9;
}

// A benchmark of painting is worth nothing when nothing was painted, or something twice.
inline void checkPaintedOnce(benchmark::State& state, const PaintCounter::Count& painted)
{
    if (painted.paints != 1)
        state.SkipWithError("not painted exactly once");
    state.counters["pixels"] = painted.pixels;
}

template <typename Action> [[nodiscard]] double secondsOf(Action&& action)
{
    const double start = processorSeconds();
    action();
    return processorSeconds() - start;
}

} // namespace zelbench
