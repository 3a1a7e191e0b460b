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
    // Ascending, because memory that a large drawing leaves behind would hide what a smaller one needs.
    std::sort(sizes.begin(), sizes.end());
    sizes.erase(std::unique(sizes.begin(), sizes.end()), sizes.end());
    return sizes;
}

} // namespace

std::optional<std::vector<int>> takeSizes(int& argc, char** argv)
{
    QByteArray text("10000,100000");
    const auto isSizes
        = [](const char* argument) { return std::strncmp(argument, SizesOption, sizeof SizesOption - 1) == 0; };
    char** const end = argv + argc;
    for (char** argument = argv + 1; argument < end; ++argument) {
        if (isSizes(*argument))
            text = *argument + sizeof SizesOption - 1;
    }
    argc = static_cast<int>(std::remove_if(argv + 1, end, isSizes) - argv);
    return parseSizes(text);
}

void printUsage()
{
    std::puts("zelbench [--sizes=10000,100000] [options of Google Benchmark]\n"
              "Measures the chip view on generated drawings and closes with a table of ratios.\n");
    benchmark::PrintDefaultHelp();
}

} // namespace zelbench
