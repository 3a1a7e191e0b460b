// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/program.h"
#include "generator/sitedrawing.h"

#include <QFile>
#include <QTemporaryDir>

#include <unistd.h>

#include <memory>
#include <string>

namespace zelbench {

namespace {

// The drawing of the size that was asked for last. It is on the disk, else the program would wait for that when it
// writes the picture.
class DrawingFile
{
public:
    static const DrawingFile& ofSize(int sites)
    {
        static std::unique_ptr<DrawingFile> current;
        if (!current || current->m_sites != sites) {
            current.reset(); // first, for its room on the disk
            current.reset(new DrawingFile(sites)); // the constructor is private
        }
        return *current;
    }

    [[nodiscard]] std::string path() const { return QFile::encodeName(m_folder.filePath("drawing.svg")).toStdString(); }

private:
    explicit DrawingFile(int sites)
        : m_sites(sites)
    {
        const std::string text = mirn::zeldevicegenerator::siteDrawing(sites);
        QFile file(m_folder.filePath("drawing.svg"));
        const auto size = static_cast<qint64>(text.size());
        if (!file.open(QIODevice::WriteOnly) || file.write(text.data(), size) != size || !file.flush()
            || fsync(file.handle()) != 0)
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    const int m_sites;
    QTemporaryDir m_folder;
};

// The whole program, from its start to its end, with a drawing that it sees for the first time.
void takeSnapshot(benchmark::State& state, int sites)
{
    Device::close(); // the memory of a window would be counted until the program has taken its place
    const std::string drawing = DrawingFile::ofSize(sites).path();
    ProgramRun run;
    for (auto _ : state) {
        const QTemporaryDir folder;
        const std::string home = QFile::encodeName(folder.path()).toStdString();
        const std::string picture = home + "/picture.png";
        run = runProgram({ZELBENCH_PROGRAM, "--snapshot", picture, drawing}, home);
        if (!run.isOk || !QFile::exists(QString::fromStdString(picture)))
            state.SkipWithError("no snapshot was written");
        state.SetIterationTime(run.processorSeconds);
    }
    state.counters["wall"] = run.wallSeconds;
    state.counters["most bytes"] = run.mostBytes / sites;
}

} // namespace

void addProgramBenchmarks(int elements)
{
    addCounted("snapshot", elements, 1, [=](benchmark::State& state) {
        takeSnapshot(state, elements);
    })->Repetitions(FewRepetitions);
}

} // namespace zelbench
