// SPDX-License-Identifier: MIT
#include "benchmarks/options.h"
#include "benchmarks/screen/latencies.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>

namespace zelscreen {

namespace {

constexpr int MostPasses = 3;
constexpr int Rounds = 4;

// Returns nothing if the program could not be measured.
std::optional<Pass> measure(int elements)
{
    ShownProgram program(elements);
    const QString problem = program.start();
    if (!problem.isEmpty()) {
        std::fprintf(stderr, "zelscreen: %s\n", qPrintable(problem));
        return std::nullopt;
    }
    Pass pass;
    for (int round = 0; round < Rounds; ++round)
        makeGestures(program, round, pass.measurements);
    pass.end = program.quit();
    if (pass.end.hasCome)
        return pass;
    std::fputs("zelscreen: The program did not end when it was asked to.\n", stderr);
    return std::nullopt;
}

// Measures until the targets are met, since a neighbour on the machine can delay a gesture. Returns false if that was
// not possible.
bool run(int elements)
{
    std::vector<Pass> passes;
    for (int number = 0; number < MostPasses && !areTargetsMet(passes); ++number) {
        std::optional<Pass> pass = measure(elements);
        if (!pass)
            return false;
        passes.push_back(std::move(*pass));
    }
    double load = 0.0;
    if (getloadavg(&load, 1) == 1)
        std::printf("load average %.1f\n", load);
    printLatencies(elements, passes);
    return true;
}

} // namespace

} // namespace zelscreen

int main(int argc, char** argv)
{
    constexpr int SmallestSize = 10'000; // as many sites as there are
    std::optional<zelbench::Options> options = zelbench::takeOptions(argc, argv);
    if (!options || argc > 1 || (!options->sizes.empty() && options->sizes.front() < SmallestSize)) {
        std::fputs("usage: zelscreen [--sizes=100000,1000000], with sizes from 10000\n", stderr);
        return 2;
    }
    const QCoreApplication application(argc, argv);
    if (options->sizes.empty())
        options->sizes = {100'000, 1'000'000};
    for (int elements : options->sizes) {
        if (!zelscreen::run(elements))
            return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
