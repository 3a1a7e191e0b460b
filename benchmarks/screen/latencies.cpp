// SPDX-License-Identifier: MIT
#include "benchmarks/screen/latencies.h"

#include "benchmarks/results/texts.h"

#include <algorithm>
#include <cmath>

using namespace zelbench;

namespace zelscreen {

namespace {

constexpr int KindWidth = 30;
constexpr int CountWidth = 6;
constexpr int ColumnWidth = 12;

struct ScreenTarget
{
    const char* label;
    double Figures::*figure;
    double limit; // seconds
};

constexpr ScreenTarget Targets[] = {{"first answer, 99 of 100 gestures", &Figures::first, 0.0167},
    {"exact picture, 99 of 100 gestures", &Figures::last, 0.080},
    {"processor time from the request to quit to the end", &Figures::quitting, 0.1}};

// Returns the value that so many percent do not exceed.
double percentile(const std::vector<Measured>& measured, double Measured::*value, double percent)
{
    std::vector<double> values;
    for (const Measured& one : measured)
        values.push_back(one.*value);
    if (values.empty())
        return 0.0;
    std::sort(values.begin(), values.end());
    const double place = std::ceil(percent / 100 * static_cast<double>(values.size()));
    return values[static_cast<std::size_t>(std::max(1.0, place)) - 1];
}

std::vector<Measured> allOf(const Pass& pass)
{
    std::vector<Measured> all;
    for (const auto& [kind, measured] : pass.measurements)
        all.insert(all.end(), measured.begin(), measured.end());
    return all;
}

std::string milliseconds(double seconds)
{
    return text("%.1f ms", seconds * 1e3);
}

void printHead(int elements)
{
    std::puts("");
    printLeft("gestures at " + sizeText(elements), KindWidth);
    printRight("n", CountWidth);
    for (const char* title : {"first 50 %", "first 99 %", "exact 50 %", "exact 99 %", "processor"})
        printRight(title, ColumnWidth);
    std::puts("");
}

void printKind(const std::string& kind, const std::vector<Measured>& measured)
{
    printLeft(kind, KindWidth);
    printRight(std::to_string(measured.size()), CountWidth);
    for (const auto value : {&Measured::first, &Measured::last}) {
        for (const double percent : {50.0, 99.0})
            printRight(milliseconds(percentile(measured, value, percent)), ColumnWidth);
    }
    printRight(milliseconds(percentile(measured, &Measured::processor, 50)), ColumnWidth);
    std::puts("");
}

std::vector<double> figuresOfPasses(const std::vector<Pass>& passes, const ScreenTarget& target)
{
    std::vector<double> figures;
    for (const Pass& pass : passes)
        figures.push_back(figuresOf(pass).*target.figure);
    std::sort(figures.begin(), figures.end());
    return figures;
}

} // namespace

Figures figuresOf(const Pass& pass)
{
    const std::vector<Measured> all = allOf(pass);
    return {percentile(all, &Measured::first, 99), percentile(all, &Measured::last, 99), pass.end.processorSeconds};
}

bool areTargetsMet(const std::vector<Pass>& passes)
{
    return std::all_of(std::begin(Targets), std::end(Targets), [&](const ScreenTarget& target) {
        return !passes.empty() && figuresOfPasses(passes, target).front() <= target.limit;
    });
}

void printLatencies(int elements, const std::vector<Pass>& passes)
{
    printHead(elements);
    for (const auto& [kind, measured] : passes.back().measurements)
        printKind(kind, measured);
    printKind("all", allOf(passes.back()));
    std::printf("\nquit: %s of processor time, %s by the clock\n",
        milliseconds(passes.back().end.processorSeconds).c_str(), milliseconds(passes.back().end.wallSeconds).c_str());
    std::puts("");
    printLeft("targets on the screen at " + sizeText(elements), LabelWidth);
    printRight("target", TimeWidth);
    printRight("figure", TimeWidth);
    std::puts("");
    for (const ScreenTarget& target : Targets) {
        const std::vector<double> figures = figuresOfPasses(passes, target);
        printLeft(target.label, LabelWidth);
        printRight("<= " + milliseconds(target.limit), TimeWidth);
        printRight(milliseconds(figures.front()), TimeWidth);
        printLeft(figures.front() <= target.limit ? "  ok" : "  MISS", 6);
        if (figures.size() > 1)
            std::printf("  %d passes %s..%s", static_cast<int>(figures.size()), milliseconds(figures.front()).c_str(),
                milliseconds(figures.back()).c_str());
        std::puts("");
    }
    std::fflush(stdout);
}

} // namespace zelscreen
