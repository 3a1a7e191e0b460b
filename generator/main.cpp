// SPDX-License-Identifier: MIT
#include "generator/benchmarkdrawing.h"
#include "generator/sampleproject.h"
#include "generator/sitedrawing.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

using namespace mirn::zeldevicegenerator;

namespace {

constexpr int MaximumElements = 10'000'000;
constexpr int MaximumLayers = 100;
constexpr int UsageError = 2;

int usage()
{
    std::cerr << "usage: zelchip-device-generator sample FOLDER\n"
                 "       zelchip-device-generator benchmark ELEMENTS FOLDER [LAYERS]\n"
                 "       zelchip-device-generator sites SITES FOLDER\n"
                 "sample writes the sample project into FOLDER, benchmark a drawing of that many elements\n"
                 "(benchmark-ELEMENTS.svg), and sites one of that many rects with names, classes and strokes\n"
                 "(sites-SITES.svg).\n";
    return UsageError;
}

// Returns 0 if the text is not a number from 1 to `maximum`.
int countFrom(const char* text, int maximum)
{
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(text, &end, 10);
    return errno == 0 && *end == '\0' && value >= 1 && value <= maximum ? static_cast<int>(value) : 0;
}

int write(const std::vector<GeneratedFile>& files, const char* folder)
{
    const std::string error = writeFiles(files, folder);
    if (error.empty())
        return EXIT_SUCCESS;
    std::cerr << "zelchip-device-generator: " << error << '\n';
    return EXIT_FAILURE;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 3 && std::strcmp(argv[1], "sample") == 0)
        return write(sampleProject(), argv[2]);
    if (argc == 4 && std::strcmp(argv[1], "sites") == 0) {
        const int sites = countFrom(argv[2], MaximumElements);
        return sites == 0 ? usage() : write({{"sites-" + std::to_string(sites) + ".svg", siteDrawing(sites)}}, argv[3]);
    }
    if ((argc != 4 && argc != 5) || std::strcmp(argv[1], "benchmark") != 0)
        return usage();
    const int elements = countFrom(argv[2], MaximumElements);
    const int layers = argc == 5 ? countFrom(argv[4], MaximumLayers) : 1;
    if (elements == 0 || layers == 0)
        return usage();
    return write({{"benchmark-" + std::to_string(elements) + ".svg", benchmarkDrawing(elements, layers)}}, argv[3]);
}
