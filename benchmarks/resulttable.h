// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zelbench {

struct FactRow;
struct ResultRow;
struct Target;

// Follows the run with one line per benchmark and closes it with the table that sets the medians against their
// yardsticks. With several sizes its last column says how time grows from the smallest to the largest: n^1.0 is
// in proportion to the number of elements.
class ResultTable final : public benchmark::BenchmarkReporter
{
public:
    explicit ResultTable(std::vector<int> sizes);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    // Rows without a result, such as those that a filter left out, are left out.
    void print() const;

    // A row for each target, for each size that has targets and was measured.
    void printTargets() const;

    // True when a benchmark found that it did not measure what it should.
    [[nodiscard]] bool hasFailures() const { return m_hasFailures; }

private:
    struct Result
    {
        double seconds = 0.0; // median
        std::map<std::string, double> counters;
    };

    void keep(const Run& run);
    [[nodiscard]] const Result* result(const char* benchmark, int elements) const;
    [[nodiscard]] std::optional<double> seconds(const ResultRow& row, int elements) const;
    [[nodiscard]] std::string growth(const ResultRow& row) const;
    void printHead() const;
    void printRow(const ResultRow& row) const;
    void printFact(const FactRow& row) const;
    void printTargets(int elements) const;
    [[nodiscard]] std::optional<double> figureOf(const Target& target, int elements) const;

    const std::vector<int> m_sizes;
    std::map<std::string, Result> m_results; // by benchmark name
    bool m_hasFailures = false;
};

} // namespace zelbench
