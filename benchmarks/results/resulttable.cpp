// SPDX-License-Identifier: MIT
#include "benchmarks/results/resulttable.h"

#include "benchmarks/results/measure.h"
#include "benchmarks/results/resultrows.h"
#include "benchmarks/results/texts.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace zelbench {

namespace {

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

} // namespace

ResultTable::ResultTable(std::vector<int> sizes)
    : m_sizes(std::move(sizes))
{ }

bool ResultTable::ReportContext(const Context& context)
{
    const benchmark::CPUInfo& machine = context.cpu_info;
    std::printf("%d cores at %.1f GHz", machine.num_cpus, machine.cycles_per_second / 1e9);
    double load = 0.0;
    if (getloadavg(&load, 1) == 1)
        std::printf(", load average %.1f", load);
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
    const auto named = [&runs](const char* aggregate) {
        return std::find_if(runs.begin(), runs.end(), [=](const Run& run) { return run.aggregate_name == aggregate; });
    };
    auto found = named(SmallestName);
    if (found == runs.end())
        found = named("median");
    if (found == runs.end())
        found = std::find_if(runs.begin(), runs.end(), [](const Run& run) { return run.repetitions == 1; });
    if (found != runs.end())
        keep(*found);
}

void ResultTable::keep(const Run& run)
{
    Results::Result kept;
    kept.seconds = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit);
    for (const auto& [name, counter] : run.counters)
        kept.counters[name] = counter.value;
    printLeft(run.run_name.function_name, LabelWidth);
    printRight(timeText(kept.seconds), TimeWidth);
    std::puts("");
    std::fflush(stdout);
    m_results.keep(run.run_name.function_name, kept);
}

std::optional<double> ResultTable::seconds(const ResultRow& row, int elements) const
{
    return m_results.figure(row.benchmark, row.counter, elements);
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
        const std::optional<double> ratio = m_results.ratio(row.benchmark, row.counter, row.yardstick, elements);
        printRight(time ? timeText(*time) : "-", TimeWidth);
        printRight(*row.yardstick && ratio ? ratioText(*ratio) : "", RatioWidth);
    }
    if (m_sizes.size() > 1)
        printRight(growth(row), RatioWidth);
    std::printf("  %s\n", row.yardstick);
}

void ResultTable::printFact(const FactRow& row) const
{
    const auto figure = [&](int elements) { return m_results.figure(row.benchmark, row.counter, elements); };
    if (std::none_of(m_sizes.begin(), m_sizes.end(), [&](int elements) { return figure(elements).has_value(); }))
        return;
    printLeft(row.label, LabelWidth);
    for (int elements : m_sizes) {
        const std::optional<double> found = figure(elements);
        printRight(found ? figureText(*found) : "-", TimeWidth);
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

} // namespace zelbench
