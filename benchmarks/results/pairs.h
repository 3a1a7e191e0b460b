// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/results/measure.h"

#include <benchmark/benchmark.h>

#include <functional>
#include <utility>

namespace zelbench {

// One of two things that are compared. Only what `act` returns counts.
struct Side
{
    std::function<double()> act; // does it once and returns the seconds that it took
    // How often it is done in each turn; the turn's time is their average. If more than once, another one goes before
    // that does not count, because the other side has left the caches full of its own. What is quick should add up to
    // some ten milliseconds for the same reason.
    int times = 1;
    std::function<void()> prepare; // before each turn; may be empty
    std::function<void()> restore; // after each turn; may be empty
};

// Measures two things by turns: yardstick, subject, yardstick, subject and so on, in one process and in the same state.
// Whoever slows the machine down then meets both of them, and the ratio of each pair stays what it is. The benchmark's
// time is the median of the subject; the counter "ratio" is the median of the pairs' ratios.
void measureInTurns(benchmark::State& state, const Side& yardstick, const Side& subject);

// Adds a benchmark whose function calls measureInTurns(), which repeats as often as is needed.
template <typename Function> benchmark::internal::Benchmark* addPairs(const char* what, int elements, Function function)
{
    return addCounted(what, elements, 1, std::move(function))->Repetitions(1);
}

} // namespace zelbench
