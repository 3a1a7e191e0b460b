// SPDX-License-Identifier: MIT
#include "benchmarks/results/targettable.h"

#include "benchmarks/results/measure.h"
#include "benchmarks/results/results.h"
#include "benchmarks/results/targets.h"
#include "benchmarks/results/texts.h"

#include <algorithm>
#include <cctype>

namespace zelbench {

namespace {

constexpr int TargetLabelWidth = LabelWidth + 8;

// Returns the figure without trailing zeros.
std::string figureText(Target::Unit unit, double figure)
{
    switch (unit) {
    case Target::Unit::Ratio:
        return text(figure >= 0.01 ? "%.3g" : "%.2g", figure);
    case Target::Unit::Microseconds:
        return text("%.3g us", figure);
    case Target::Unit::Milliseconds:
        return text("%.3g ms", figure);
    case Target::Unit::Seconds:
        return text("%.3g s", figure);
    case Target::Unit::Kilobytes:
        return text("%.3g KB", figure);
    case Target::Unit::Count:
        return text("%.0f", figure);
    }
    return {};
}

// Returns the figure in the target's unit.
std::optional<double> figureOf(const Target& target, const Results& results, int elements)
{
    if (target.unit == Target::Unit::Ratio)
        return results.figure(target.benchmark, "ratio", elements);
    const std::optional<double> figure = results.figure(target.benchmark, target.counter, elements);
    if (!figure)
        return std::nullopt;
    switch (target.unit) {
    case Target::Unit::Microseconds:
        return *figure * 1e6;
    case Target::Unit::Milliseconds:
        return *figure * 1e3;
    case Target::Unit::Kilobytes:
        return *figure / 1024;
    default:
        return figure;
    }
}

double best(const std::vector<double>& passes)
{
    return *std::min_element(passes.begin(), passes.end());
}

// A figure that is no time is the same in each pass.
bool variesWithTheMachine(const Target& target)
{
    return target.unit != Target::Unit::Count && target.unit != Target::Unit::Kilobytes;
}

// Matches the benchmark, whatever its number of iterations and repetitions, which follow its name.
std::string patternOf(const char* benchmark, int elements)
{
    std::string pattern = "^";
    for (const char c : benchmarkName(benchmark, elements))
        pattern += std::isalnum(static_cast<unsigned char>(c)) || c == ' ' || c == ',' || c == '/' ? std::string(1, c)
                                                                                                   : ".";
    return pattern + "(/|$)";
}

} // namespace

TargetTable::TargetTable(const std::vector<int>& sizes)
{
    for (int elements : sizes) {
        for (const Target& target : targets()) {
            const std::optional<double> limit = limitOf(target, elements);
            if (limit)
                m_rows.push_back({&target, elements, *limit, {}});
        }
    }
}

void TargetTable::add(const Results& results)
{
    for (Row& row : m_rows) {
        const std::optional<double> figure = figureOf(*row.target, results, row.elements);
        if (figure && (row.passes.empty() || isMeasuredAgain(row)))
            row.passes.push_back(*figure);
    }
}

bool TargetTable::isMiss(const Row& row)
{
    return !row.passes.empty() && !(best(row.passes) <= row.limit);
}

bool TargetTable::isMeasuredAgain(const Row& row)
{
    return isMiss(row) && variesWithTheMachine(*row.target);
}

std::string TargetTable::filterOfMisses() const
{
    std::string filter;
    for (const Row& row : m_rows) {
        if (isMeasuredAgain(row))
            filter += (filter.empty() ? "" : "|") + patternOf(row.target->benchmark, row.elements);
    }
    return filter;
}

void TargetTable::printHead(int elements)
{
    std::puts("");
    printLeft("targets at " + sizeText(elements), TargetLabelWidth);
    printRight("target", TimeWidth);
    printRight("figure", TimeWidth);
    std::puts("");
}

void TargetTable::printRow(const Row& row)
{
    const Target::Unit unit = row.target->unit;
    printLeft(row.target->label, TargetLabelWidth);
    printRight("<= " + figureText(unit, row.limit), TimeWidth);
    printRight(figureText(unit, best(row.passes)), TimeWidth);
    printLeft(isMiss(row) ? "  MISS" : "  ok", 6);
    if (row.passes.size() > 1)
        std::printf("  %d passes %s..%s", static_cast<int>(row.passes.size()),
            figureText(unit, best(row.passes)).c_str(),
            figureText(unit, *std::max_element(row.passes.begin(), row.passes.end())).c_str());
    std::puts("");
}

void TargetTable::print() const
{
    int elements = 0;
    for (const Row& row : m_rows) {
        if (row.passes.empty())
            continue;
        if (row.elements != elements)
            printHead(row.elements);
        elements = row.elements;
        printRow(row);
    }
}

} // namespace zelbench
