// SPDX-License-Identifier: MIT
#include "benchmarks/barepainter.h"
#include "benchmarks/benchmarks.h"
#include "benchmarks/chipwindow.h"
#include "benchmarks/device.h"
#include "benchmarks/measure.h"
#include "benchmarks/memory.h"
#include "graphics/zelgraphicsview.h"

#include <QEventLoop>
#include <QImage>
#include <QTimer>

namespace zelbench {

namespace {

constexpr int IdleTime = 500; // milliseconds

// What a drawing keeps in memory from the empty window to the first picture.
void measureMemory(benchmark::State& state, Device& device)
{
    device.closeWindow();
    device.removeWorkingFile();
    ChipWindow window(device.drawingFile(), device.folder());
    window.show(1.0);
    window.repaint();
    const double before = residentBytes();
    bool isLoaded = false;
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            isLoaded = window.load();
            window.show(1.0);
            window.repaint();
        }));
    }
    window.settle();
    if (!isLoaded)
        state.SkipWithError("the drawing was not loaded");
    state.counters["bytes"] = (residentBytes() - before) / device.elements();
}

// How many paint events the first picture takes, and what an untouched window does after it.
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

// The number of pixels in which view and yardstick differ: if it is not 0, their times say nothing.
int differenceAt(double zoom, Device& device)
{
    ChipWindow& window = device.window();
    window.show(zoom);
    window.settle();
    QImage picture(ChipWindow::Width, ChipWindow::Height, QImage::Format_RGB32);
    device.bare().paint(picture, window.view()->viewportTransform(), window.view()->getVisibleLayers());
    return differingPixels(window.picture(), picture);
}

void comparePictures(benchmark::State& state, Device& device)
{
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            state.counters["differing at fit"] = differenceAt(1.0, device);
            state.counters["differing at 4x"] = differenceAt(4.0, device);
            state.counters["differing at 30x"] = differenceAt(30.0, device);
        }));
    }
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
