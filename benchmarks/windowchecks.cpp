// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/barepainter.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/openedalone.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsview.h"

#include <QCheckBox>
#include <QEventLoop>
#include <QImage>
#include <QMenu>
#include <QSet>
#include <QTimer>

#include <optional>
#include <string>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int IdleTime = 500; // milliseconds

void measureMemory(benchmark::State& state, Device& device)
{
    device.removeWorkingFile();
    std::optional<MemoryOfDrawing> memory;
    for (auto _ : state)
        state.SetIterationTime(secondsOf([&] { memory = memoryOpenedAlone(device.drawingFile(), device.folder()); }));
    if (!memory) {
        state.SkipWithError("the drawing was not loaded");
        return;
    }
    state.counters["bytes"] = memory->atRest / device.elements();
    state.counters["most bytes"] = memory->most / device.elements();
}

// Counts the paint events until the first picture is complete, and what an untouched window does after it.
void rest(benchmark::State& state, Device& device)
{
    device.closeWindow();
    ChipWindow window(device.drawingFile(), device.folder());
    if (!window.load())
        state.SkipWithError("the drawing was not loaded");
    window.show(1.0);
    state.counters["paints to rest"] = window.settle();
    QEventLoop loop;
    for (auto _ : state) {
        QTimer::singleShot(IdleTime, &loop, &QEventLoop::quit);
        const double used = secondsOf([&loop] { loop.exec(); });
        state.SetIterationTime(used);
        state.counters["idle us"] = used * 1e6;
    }
    state.counters["idle paints"] = window.painted().take().paints;
}

int differingPixels(const QImage& a, const QImage& b)
{
    int differing = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* lineA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* lineB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x)
            differing += (lineA[x] ^ lineB[x]) & RGB_MASK ? 1 : 0;
    }
    return differing;
}

// Marks elements all over the drawing with many states at once, or removes all marks.
void setStates(Device& device, bool areMany)
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    QSet<int> selected;
    QSet<int> highlighted;
    for (int id = 1; areMany && id <= device.elements(); ++id) {
        if (id % 7 == 0)
            selected.insert(id);
        if (id % 11 == 0)
            highlighted.insert(id);
    }
    database->selectedIds().assign(selected);
    database->highlightedIds().assign(highlighted);
    const QList<QCheckBox*> kinds = database->getViewFilterMenu()->findChildren<QCheckBox*>();
    kinds.last()->setChecked(areMany);
    if (database->filteredIds().isEmpty() == areMany)
        qFatal("the filter does not work");
}

// Counts the pixels in which the view differs from the yardstick and from the picture that the items paint. If these
// are not 0, the times mean nothing.
void compareAt(double zoom, const std::string& name, benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(zoom);
    window.settle();
    QImage bare(ChipWindow::Width, ChipWindow::Height, QImage::Format_RGB32);
    device.bare().paint(bare, window.view()->viewportTransform(), window.view()->getVisibleLayers());
    const QImage picture = window.picture();
    state.counters["differing " + name] = differingPixels(picture, bare);
    state.counters["items " + name] = differingPixels(picture, window.pictureOfItems());
    setStates(device, true);
    window.settle();
    const QImage marked = window.picture();
    state.counters["states " + name] = differingPixels(marked, window.pictureOfItems());
    setStates(device, false);
    window.settle();
    if (differingPixels(marked, picture) == 0)
        state.SkipWithError("the states do not show");
    if (differingPixels(window.picture(), picture) != 0)
        state.SkipWithError("the states leave something behind");
}

void comparePictures(benchmark::State& state, Device& device)
{
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            compareAt(1.0, "at fit", state, device);
            compareAt(4.0, "at 4x", state, device);
            compareAt(30.0, "at 30x", state, device);
        }));
    }
    device.closeWindow(); // it has all items now
}

} // namespace

void addWindowChecks(int elements)
{
    addCounted("memory", elements, 1, [=](benchmark::State& state) {
        measureMemory(state, Device::ofSize(elements));
    })->Repetitions(1);
    addCounted("rest", elements, 1, [=](benchmark::State& state) {
        rest(state, Device::ofSize(elements));
    })->Repetitions(1);
    addCounted("pictures", elements, 1, [=](benchmark::State& state) {
        comparePictures(state, Device::ofSize(elements));
    })->Repetitions(1);
}

} // namespace zelbench
