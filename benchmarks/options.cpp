// SPDX-License-Identifier: MIT
#include "benchmarks/options.h"

#include <benchmark/benchmark.h>

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace zelbench {

namespace {

constexpr char SizesOption[] = "--sizes=";
constexpr char PeerOption[] = "--peer";
constexpr char LargeOption[] = "--large";
constexpr int SmallestSize = 1000;
constexpr int LargestSize = 10000000;

std::optional<std::vector<int>> parseSizes(const QByteArray& text)
{
    std::vector<int> sizes;
    const QList<QByteArray> parts = text.split(',');
    for (const QByteArray& part : parts) {
        const int size = part.toInt();
        if (size < SmallestSize || size > LargestSize)
            return std::nullopt;
        sizes.push_back(size);
    }
    // The sizes are ascending, because memory left by a large drawing would hide the memory that a smaller one needs.
    std::sort(sizes.begin(), sizes.end());
    sizes.erase(std::unique(sizes.begin(), sizes.end()), sizes.end());
    return sizes;
}

} // namespace

std::optional<Options> takeOptions(int& argc, char** argv)
{
    std::optional<Options> options(std::in_place);
    const auto take = [&options](const char* argument) {
        if (std::strcmp(argument, PeerOption) == 0) {
            if (options)
                options->hasPeer = true;
            return true;
        }
        if (std::strcmp(argument, LargeOption) == 0) {
            if (options)
                options->programSizes = {1'200'000, 2'300'000};
            return true;
        }
        if (std::strncmp(argument, SizesOption, sizeof SizesOption - 1) != 0)
            return false;
        const auto sizes = parseSizes(argument + sizeof SizesOption - 1);
        if (!sizes)
            options.reset();
        else if (options)
            options->sizes = *sizes;
        return true;
    };
    argc = static_cast<int>(std::remove_if(argv + 1, argv + argc, take) - argv);
    return options;
}

void printUsage()
{
    std::puts(
        "zelbench [--sizes=10000,100000] [--peer] [--large] [options of Google Benchmark]\n"
        "Measures the chip view on generated drawings and closes with a table of ratios and one of targets.\n"
        "--peer adds KLayout on the same drawings, where it is installed.\n"
        "--large adds snapshots of drawings with 1.2 and 2.3 million rects; ./bench --screen measures gestures on\n"
        "a screen.\n");
    benchmark::PrintDefaultHelp();
}

} // namespace zelbench
