// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace zelbench {

class Results;
struct Target;

// Compares the results with the targets. A row whose figure misses its target is to be measured again, and only what
// missed in every pass is a miss: a neighbour on the machine can make a pass too slow, but hardly all of them.
class TargetTable final
{
public:
    static constexpr int MostPasses = 3;

    explicit TargetTable(const std::vector<int>& sizes);

    // Takes the figures of a pass over everything, or over what had missed before.
    void add(const Results& results);

    // Returns what to measure again, as a regular expression for the names of the benchmarks; empty for nothing.
    [[nodiscard]] std::string filterOfMisses() const;

    // Prints a row for each target and measured size, with the best figure of all passes and how far they lay apart.
    void print() const;

private:
    struct Row
    {
        const Target* target;
        int elements;
        double limit;
        std::vector<double> passes;
    };

    [[nodiscard]] static bool isMiss(const Row& row);
    [[nodiscard]] static bool isMeasuredAgain(const Row& row);
    static void printHead(int elements);
    static void printRow(const Row& row);

    std::vector<Row> m_rows; // by size, and then in the order of the targets
};

} // namespace zelbench
