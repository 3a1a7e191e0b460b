// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/program.h"
#include "generator/sitedrawing.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

#include <algorithm>
#include <string>

namespace zelbench {

namespace {

// Returns false if the drawing cannot be written. It is on the disk afterwards, else the program would wait for that
// when it writes the picture.
bool writeDrawing(const std::string& name, int sites)
{
    const std::string text = mirn::zeldevicegenerator::siteDrawing(sites);
    QFile file(QString::fromStdString(name));
    return file.open(QIODevice::WriteOnly) && file.write(text.data(), static_cast<qint64>(text.size())) > 0
        && file.flush() && fsync(file.handle()) == 0;
}

// The whole program, from its start to its end, with a drawing that it sees for the first time.
void takeSnapshot(benchmark::State& state, int sites)
{
    Device::close(); // the memory of a window would be counted until the program has taken its place
    double wall = 0.0;
    double most = 0.0;
    for (auto _ : state) {
        const QTemporaryDir folder;
        const std::string home = QFile::encodeName(folder.path()).toStdString();
        const std::string drawing = home + "/drawing.svg";
        const std::string picture = home + "/picture.png";
        if (!writeDrawing(drawing, sites))
            state.SkipWithError("the drawing was not written");
        const ProgramRun run = runProgram({ZELBENCH_PROGRAM, "--snapshot", picture, drawing}, home);
        if (!run.isOk || !QFile::exists(QString::fromStdString(picture)))
            state.SkipWithError("no snapshot was written");
        state.SetIterationTime(run.processorSeconds);
        wall = run.wallSeconds;
        most = std::max(most, run.mostBytes);
    }
    state.counters["wall"] = wall;
    state.counters["most bytes"] = most / sites;
}

} // namespace

void addProgramBenchmarks(int elements)
{
    addCounted("snapshot", elements, 1, [=](benchmark::State& state) {
        takeSnapshot(state, elements);
    })->Repetitions(FewRepetitions);
}

} // namespace zelbench
