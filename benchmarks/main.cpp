// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/options.h"
#include "benchmarks/results/resulttable.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/layoutviewer.h"

#include <QApplication>
#include <QFont>

#include <cstdio>

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

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(dropComplaints);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    pinLook();

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
    for (int elements : options->sizes) {
        zelbench::addWindowChecks(elements);
        zelbench::addLoadingBenchmarks(elements);
        zelbench::addPaintingBenchmarks(elements);
        if (options->hasPeer && zelbench::hasLayoutViewer())
            zelbench::addPeerBenchmarks(elements);
        zelbench::addStateBenchmarks(elements);
        zelbench::addPickingBenchmarks(elements);
        zelbench::addPlanningBenchmarks(elements);
        zelbench::addResourceBenchmarks(elements);
        zelbench::addDesignBenchmarks(elements);
    }
    zelbench::ResultTable table(options->sizes);
    benchmark::RunSpecifiedBenchmarks(&table);
    zelbench::Device::close();
    table.print();
    table.printTargets();
    return table.hasFailures() ? 1 : 0;
}
