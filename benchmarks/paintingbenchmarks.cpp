// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/results/pairs.h"
#include "benchmarks/subjects/barepainter.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/layoutviewer.h"
#include "benchmarks/subjects/yardsticks.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsview.h"
#include "planning/overviewmap.h"
#include "platform/contract/svgparser.h"

#include <QFile>
#include <QImage>
#include <QScrollBar>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

using mirn::zelchipview::OverviewMap;
using mirn::zelchipview::ZELChipViewDatabase;

namespace zelbench {

namespace {

constexpr int PanDistance = 50; // pixels
constexpr int BarePaintings = 5;
constexpr int PansOfTurn = 60;
constexpr int RepaintsOfTurn = 10;
constexpr int QuickRepaintsOfTurn = 150;

void paintBare(benchmark::State& state, Device& device, double zoom)
{
    ChipWindow& window = device.window();
    const BarePainter& bare = device.bare();
    window.show(zoom);
    const QTransform transform = window.view()->viewportTransform();
    const QList<int> layers = window.view()->getVisibleLayers();
    QImage picture(ChipWindow::Width, ChipWindow::Height, QImage::Format_RGB32);
    int drawn = 0;
    for (auto _ : state)
        state.SetIterationTime(secondsOf([&] { drawn = bare.paint(picture, transform, layers); }));
    state.counters["drawn"] = drawn;
}

// Paints at another scale, as after a zoom, so that nothing of the previous picture can be reused.
double secondsOfRepaint(benchmark::State& state, ChipWindow& window)
{
    const double seconds = secondsOf([&window] {
        window.changeScaleALittle();
        window.repaint();
    });
    checkPaintedOnce(state, window.painted().take());
    return seconds;
}

void paintAll(benchmark::State& state, Device& device, double zoom, int timesInTurn)
{
    ChipWindow& window = device.window();
    window.show(zoom);
    window.settle();
    int further = 0;
    Side bare = bareSide(device);
    bare.times = timesInTurn;
    Side full{[&] { return secondsOfRepaint(state, window); }, timesInTurn, {}, {}};
    full.restore = [&] { further += window.settle(); };
    measureInTurns(state, bare, full);
    state.counters["further paints"] = further;
}

// The same with two threads, both sides by the clock on the wall.
void paintAllByTwo(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.settle();
    Side bare = bareSide(device);
    bare.act = [paint = bare.act] { return wallSecondsOf(paint); };
    Side full{[&] { return wallSecondsOf([&] { (void)secondsOfRepaint(state, window); }); }, 1, {}, {}};
    full.prepare = [&window] { window.view()->setPaintThreads(2); };
    full.restore = [&window] { window.settle(); };
    measureInTurns(state, bare, full);
    window.view()->setPaintThreads(1);
}

void handOutAll(Device& device)
{
    for (int loadNumber = 1; loadNumber <= device.elements(); ++loadNumber)
        (void)ZELChipViewDatabase::getInstance()->getGraphicItemAttribute(loadNumber); // is handed out by that
    device.window().repaint();
}

constexpr int MostHandedOut = 100'000; // each turn makes the items of so many elements

// The host holds every attribute and may have changed its values without notice. What was handed out stays so as long
// as the window, so every turn has a window of its own.
void paintHandedOut(benchmark::State& state, Device& device)
{
    const auto repaint = [&] { return secondsOfRepaint(state, device.window()); };
    const auto openAnew = [&device] {
        device.closeWindow();
        device.window().show(1.0);
        device.window().repaint();
        device.window().settle();
    };
    const auto handOut = [&device] {
        handOutAll(device);
        device.window().painted().take();
    };
    measureInTurns(state, {repaint, RepaintsOfTurn, openAnew, {}}, {repaint, RepaintsOfTurn, handOut, {}});
    device.closeWindow();
}

void paintUnchanged(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.repaint();
    window.settle();
    const auto repaint = [&] {
        const double seconds = secondsOf([&window] { window.repaint(); });
        checkPaintedOnce(state, window.painted().take());
        return seconds;
    };
    measureInTurns(state, bareSide(device), {repaint, QuickRepaintsOfTurn, {}, {}});
}

enum class Map { None, Shown };

void pan(benchmark::State& state, Device& device, Map map)
{
    ChipWindow& window = device.window();
    std::unique_ptr<OverviewMap> overview(map == Map::Shown ? new OverviewMap(window.view()) : nullptr);
    window.show(4.0);
    window.repaint();
    if (overview)
        overview->settle();
    window.settle();
    QScrollBar* bar = window.view()->horizontalScrollBar();
    int distance = PanDistance;
    const auto panOnce = [&] {
        const double seconds = secondsOf([&] {
            bar->setValue(bar->value() + distance);
            window.deliver();
        });
        checkPaintedOnce(state, window.painted().take());
        distance = -distance;
        return seconds;
    };
    measureInTurns(state, bareSide(device), {panOnce, PansOfTurn, {}, {}});
    if (overview && overview->isHidden())
        state.SkipWithError("the overview map does not show");
}

// The map of the whole drawing, from nothing: what would be done in steps while there is nothing else to do.
void paintMap(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(4.0);
    window.repaint();
    window.settle();
    for (auto _ : state) {
        OverviewMap map(window.view());
        state.SetIterationTime(secondsOf([&map] { map.settle(); }));
    }
}

void paintItems(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.settle();
    const Side items = itemsSide(device);
    for (auto _ : state)
        state.SetIterationTime(items.act());
    device.closeWindow(); // it has all items now
}

// Returns the quickest of a few paintings.
double secondsOfBare(Device& device, double zoom)
{
    device.window().show(zoom);
    const Side bare = bareSide(device);
    double least = bare.act();
    for (int n = 1; n < BarePaintings; ++n)
        least = std::min(least, bare.act());
    return least;
}

// KLayout runs in a process of its own and measures itself, right after the yardstick.
void paintWithLayoutViewer(benchmark::State& state, Device& device)
{
    const std::pair<const char*, double> zooms[] = {{"at fit", 1.0}, {"at 4x", 4.0}, {"at 30x", 30.0}};
    for (auto _ : state) {
        for (const auto& [name, zoom] : zooms)
            state.counters[std::string("ratio ") + name] = secondsOfBare(device, zoom);
        QString error;
        const auto times = repaintTimesOfLayoutViewer(
            device.parsed().getGraphicItems(), QFile::decodeName(device.folder().c_str()), &error);
        if (!times) {
            state.SkipWithError(qPrintable(error));
            return;
        }
        state.SetIterationTime(times->at("at fit"));
        for (const auto& [zoom, seconds] : *times) {
            state.counters[zoom] = seconds;
            state.counters["ratio " + zoom] = seconds / state.counters["ratio " + zoom];
        }
    }
}

} // namespace

void addPeerBenchmarks(int elements)
{
    addCounted("KLayout", elements, 1, [=](benchmark::State& state) {
        paintWithLayoutViewer(state, Device::ofSize(elements));
    })->Repetitions(FewRepetitions);
}

void addPaintingBenchmarks(int elements)
{
    struct Zoom
    {
        double factor;
        const char* bare;
        const char* full;
        int timesInTurn;
    };
    constexpr Zoom Zooms[] = {{1.0, "bare QPainter at fit", "full repaint at fit", 1},
        {4.0, "bare QPainter at 4x", "full repaint at 4x", 5},
        {30.0, "bare QPainter at 30x", "full repaint at 30x", 20}};
    for (const Zoom& zoom : Zooms) {
        const double factor = zoom.factor;
        add(zoom.bare, elements, [=](benchmark::State& state) { paintBare(state, Device::ofSize(elements), factor); });
        addPairs(zoom.full, elements, [factor, elements, times = zoom.timesInTurn](benchmark::State& state) {
            paintAll(state, Device::ofSize(elements), factor, times);
        });
    }
    addPairs("full repaint by two threads", elements,
        [=](benchmark::State& state) { paintAllByTwo(state, Device::ofSize(elements)); });
    add("items one by one at fit", elements,
        [=](benchmark::State& state) { paintItems(state, Device::ofSize(elements)); });
    addPairs("pan by 50 pixels at 4x", elements,
        [=](benchmark::State& state) { pan(state, Device::ofSize(elements), Map::None); });
    addPairs("pan with the overview map", elements,
        [=](benchmark::State& state) { pan(state, Device::ofSize(elements), Map::Shown); });
    add("overview map", elements, [=](benchmark::State& state) { paintMap(state, Device::ofSize(elements)); });
    addPairs("repaint, nothing changed", elements,
        [=](benchmark::State& state) { paintUnchanged(state, Device::ofSize(elements)); });
    if (elements <= MostHandedOut)
        addPairs("full repaint, handed out", elements,
            [=](benchmark::State& state) { paintHandedOut(state, Device::ofSize(elements)); });
}

} // namespace zelbench
