// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/results/results.h"

#include <benchmark/benchmark.h>

#include <optional>
#include <string>
#include <vector>

namespace zelbench {

struct FactRow;
struct ResultRow;

// Prints one line per benchmark during the run, and at its end a table that compares the medians with their yardsticks.
// With several sizes, the last column tells how the time grows from the smallest to the largest: n^1.0 is proportional
// to the number of elements.
class ResultTable final : public benchmark::BenchmarkReporter
{
public:
    explicit ResultTable(std::vector<int> sizes);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;

    // Prints the table. Rows without a result, such as filtered-out benchmarks, are omitted.
    void print() const;

    [[nodiscard]] const Results& results() const { return m_results; }

    // Returns true if a benchmark has found that it did not measure what it should.
    [[nodiscard]] bool hasFailures() const { return m_hasFailures; }

private:
    void keep(const Run& run);
    [[nodiscard]] std::optional<double> seconds(const ResultRow& row, int elements) const;
    [[nodiscard]] std::string growth(const ResultRow& row) const;
    void printHead() const;
    void printRow(const ResultRow& row) const;
    void printFact(const FactRow& row) const;

    const std::vector<int> m_sizes;
    Results m_results;
    bool m_hasFailures = false;
};

} // namespace zelbench
