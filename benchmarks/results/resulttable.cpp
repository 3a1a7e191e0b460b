// SPDX-License-Identifier: MIT
#include "benchmarks/results/resulttable.h"

#include "benchmarks/results/measure.h"
#include "benchmarks/results/resultrows.h"
#include "benchmarks/results/targets.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace zelbench {

namespace {

constexpr int LabelWidth = 52;
constexpr int TimeWidth = 13;
constexpr int RatioWidth = 9;

template <typename... Values> std::string text(const char* format, Values... values)
{
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, format, values...);
    return buffer;
}

std::string timeText(double seconds)
{
    if (seconds >= 1.0)
        return text("%.2f s ", seconds);
    if (seconds >= 1e-3)
        return text(seconds >= 0.1 ? "%.0f ms" : "%.2f ms", seconds * 1e3);
    return text("%.1f us", seconds * 1e6);
}

std::string figureText(double figure)
{
    return text(figure == std::floor(figure) || figure >= 100 ? "%.0f" : "%.2f", figure);
}

std::string ratioText(double ratio)
{
    return text(ratio >= 0.1 ? "%.2f" : "%.4f", ratio);
}

// Returns the figure without trailing zeros.
std::string targetText(Target::Unit unit, double figure)
{
    switch (unit) {
    case Target::Unit::Ratio:
        return text(figure >= 0.01 ? "%.3g" : "%.2g", figure);
    case Target::Unit::Microseconds:
        return text("%.3g us", figure);
    case Target::Unit::Seconds:
        return text("%.3g s", figure);
    case Target::Unit::Kilobytes:
        return text("%.3g KB", figure);
    case Target::Unit::Count:
        return text("%.0f", figure);
    }
    return {};
}

std::string sizeText(int elements)
{
    return elements % 1000000 == 0 ? text("%d M", elements / 1000000) : text("%g k", elements / 1000.0);
}

void printLeft(const std::string& cell, int width)
{
    std::printf("%-*s", width, cell.c_str());
}

void printRight(const std::string& cell, int width)
{
    std::printf("%*s", width, cell.c_str());
}

} // namespace

ResultTable::ResultTable(std::vector<int> sizes)
    : m_sizes(std::move(sizes))
{ }

bool ResultTable::ReportContext(const Context& context)
{
    const benchmark::CPUInfo& machine = context.cpu_info;
    std::printf("%d cores at %.1f GHz", machine.num_cpus, machine.cycles_per_second / 1e9);
    if (!machine.load_avg.empty())
        std::printf(", load average %.1f", machine.load_avg.front());
    std::puts("");
    return true;
}

void ResultTable::ReportRuns(const std::vector<Run>& runs)
{
    const auto failed = std::find_if(runs.begin(), runs.end(), [](const Run& run) { return run.error_occurred; });
    if (failed != runs.end()) {
        m_hasFailures = true;
        printLeft(failed->run_name.function_name, LabelWidth);
        std::printf("failed: %s\n", failed->error_message.c_str());
        return;
    }
    const auto isResult = [](const Run& run) { return run.aggregate_name == "median" || run.repetitions == 1; };
    const auto found = std::find_if(runs.begin(), runs.end(), isResult);
    if (found != runs.end())
        keep(*found);
}

void ResultTable::keep(const Run& run)
{
    Result& kept = m_results[run.run_name.function_name];
    kept.seconds = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    for (const auto& [name, counter] : run.counters)
        kept.counters[name] = counter.value;
    printLeft(run.run_name.function_name, LabelWidth);
    printRight(timeText(kept.seconds), TimeWidth);
    std::puts("");
    std::fflush(stdout);
}

const ResultTable::Result* ResultTable::result(const char* benchmark, int elements) const
{
    const auto found = m_results.find(benchmarkName(benchmark, elements));
    return found != m_results.end() ? &found->second : nullptr;
}

std::optional<double> ResultTable::seconds(const ResultRow& row, int elements) const
{
    const Result* found = result(row.benchmark, elements);
    if (!found)
        return std::nullopt;
    return *row.counter ? found->counters.at(row.counter) : found->seconds;
}

std::string ResultTable::growth(const ResultRow& row) const
{
    const std::optional<double> first = seconds(row, m_sizes.front());
    const std::optional<double> last = seconds(row, m_sizes.back());
    if (!first || !last || m_sizes.size() < 2)
        return {};
    return text("n^%.1f", std::log(*last / *first) / std::log(double(m_sizes.back()) / m_sizes.front()));
}

void ResultTable::printHead() const
{
    printLeft("what", LabelWidth);
    for (int elements : m_sizes) {
        printRight(sizeText(elements), TimeWidth);
        printRight("ratio", RatioWidth);
    }
    if (m_sizes.size() > 1)
        printRight("growth", RatioWidth);
    std::puts("  ratio to");
}

void ResultTable::printRow(const ResultRow& row) const
{
    const auto hasResult = [&](int elements) { return seconds(row, elements).has_value(); };
    if (std::none_of(m_sizes.begin(), m_sizes.end(), hasResult))
        return;
    printLeft(row.label, LabelWidth);
    for (int elements : m_sizes) {
        const std::optional<double> time = seconds(row, elements);
        const Result* yardstick = result(row.yardstick, elements);
        printRight(time ? timeText(*time) : "-", TimeWidth);
        printRight(time && yardstick ? ratioText(*time / yardstick->seconds) : "", RatioWidth);
    }
    if (m_sizes.size() > 1)
        printRight(growth(row), RatioWidth);
    std::printf("  %s\n", row.yardstick);
}

void ResultTable::printFact(const FactRow& row) const
{
    const auto hasResult = [&](int elements) { return result(row.benchmark, elements) != nullptr; };
    if (std::none_of(m_sizes.begin(), m_sizes.end(), hasResult))
        return;
    printLeft(row.label, LabelWidth);
    for (int elements : m_sizes) {
        const Result* found = result(row.benchmark, elements);
        printRight(found ? figureText(found->counters.at(row.counter)) : "-", TimeWidth);
        printRight("", RatioWidth);
    }
    std::puts("");
}

void ResultTable::print() const
{
    std::puts("");
    printHead();
    for (const ResultRow& row : resultRows())
        printRow(row);
    std::puts("");
    for (const FactRow& row : factRows())
        printFact(row);
}

// Returns the figure in the target's unit.
std::optional<double> ResultTable::figureOf(const Target& target, int elements) const
{
    const Result* found = result(target.benchmark, elements);
    const Result* yardstick = result(target.yardstick, elements);
    if (!found || (*target.yardstick && !yardstick))
        return std::nullopt;
    const double figure = *target.counter ? found->counters.at(target.counter) : found->seconds;
    switch (target.unit) {
    case Target::Unit::Ratio:
        return figure / yardstick->seconds;
    case Target::Unit::Microseconds:
        return figure * 1e6;
    case Target::Unit::Kilobytes:
        return figure / 1024;
    case Target::Unit::Seconds:
    case Target::Unit::Count:
        break;
    }
    return figure;
}

void ResultTable::printTargets(int elements) const
{
    bool hasHead = false;
    for (const Target& target : targets()) {
        const std::optional<double> limit = limitOf(target, elements);
        const std::optional<double> figure = figureOf(target, elements);
        if (!limit || !figure)
            continue;
        if (!hasHead) {
            hasHead = true;
            std::puts("");
            printLeft("targets at " + sizeText(elements), LabelWidth + 2);
            printRight("target", TimeWidth);
            printRight("figure", TimeWidth);
            std::puts("");
        }
        printLeft(target.label, LabelWidth + 2);
        printRight("<= " + targetText(target.unit, *limit), TimeWidth);
        printRight(targetText(target.unit, *figure), TimeWidth);
        std::puts(*figure <= *limit ? "  ok" : "  MISS");
    }
}

void ResultTable::printTargets() const
{
    for (int elements : m_sizes)
        printTargets(elements);
}

} // namespace zelbench
