// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/options.h"
#include "benchmarks/results/resulttable.h"
#include "benchmarks/results/targettable.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/layoutviewer.h"
#include "benchmarks/subjects/openedalone.h"

#include <QApplication>
#include <QFont>

#include <cstdio>
#include <optional>
#include <vector>

namespace {

// Makes the look the same on every machine: one style and one font.
void pinLook()
{
    QApplication::setStyle(QStringLiteral("Fusion"));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(12);
    QApplication::setFont(font);
}

// The offscreen platform has no window manager to report sizes to, and warns about it for every window.
void dropComplaints(QtMsgType type, const QMessageLogContext& context, const QString& message)
{
    if (!message.contains(QLatin1String("propagateSizeHints")))
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, context, message)));
}

// The tree's rows come first, before anything makes an item of each element. Items leave many small pieces of memory,
// which the tree would then use in any order. A program that makes its items on demand has none.
void addBenchmarks(int elements, bool hasPeer)
{
    zelbench::addResourceBenchmarks(elements);
    zelbench::addLoadingBenchmarks(elements);
    zelbench::addWindowChecks(elements);
    zelbench::addPaintingBenchmarks(elements);
    if (hasPeer)
        zelbench::addPeerBenchmarks(elements);
    zelbench::addStateBenchmarks(elements);
    zelbench::addFilterBenchmarks(elements);
    zelbench::addPickingBenchmarks(elements);
    zelbench::addPlanningBenchmarks(elements);
    zelbench::addDesignBenchmarks(elements);
    zelbench::addProgramBenchmarks(elements);
}

// Runs everything, and again what missed its target. Returns the status to end with.
int run(const std::vector<int>& sizes)
{
    zelbench::ResultTable table(sizes);
    zelbench::TargetTable targets(sizes);
    benchmark::RunSpecifiedBenchmarks(&table);
    targets.add(table.results());
    for (int pass = 2; pass <= zelbench::TargetTable::MostPasses && !targets.filterOfMisses().empty(); ++pass) {
        zelbench::Device::close();
        std::printf("\nwhat missed its target, pass %d: ", pass);
        benchmark::RunSpecifiedBenchmarks(&table, targets.filterOfMisses());
        targets.add(table.results());
    }
    zelbench::Device::close();
    table.print();
    targets.print();
    return table.hasFailures() ? 1 : 0;
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(dropComplaints);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    pinLook();
    if (const std::optional<int> status = zelbench::answerOpenedAlone(argc, argv))
        return *status;

    const std::optional<zelbench::Options> options = zelbench::takeOptions(argc, argv);
    if (!options) {
        std::fputs("zelbench: --sizes takes numbers from 1000 to 10000000, separated by commas\n", stderr);
        return 2;
    }
    benchmark::Initialize(&argc, argv, zelbench::printUsage);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    if (options->hasPeer && !zelbench::hasLayoutViewer())
        std::fputs("zelbench: klayout is not installed; its rows are left out\n", stderr);
    std::vector<int> sizes = options->sizes;
    if (sizes.empty() && options->programSizes.empty())
        sizes = {10000, 100000};
    for (int elements : sizes)
        addBenchmarks(elements, options->hasPeer && zelbench::hasLayoutViewer());
    for (int elements : options->programSizes) {
        zelbench::addProgramBenchmarks(elements);
        sizes.push_back(elements);
    }
    return run(sizes);
}
