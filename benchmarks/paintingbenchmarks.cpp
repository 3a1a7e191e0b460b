// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/barepainter.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/layoutviewer.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/overviewmap.h"
#include "platform/contract/svgparser.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QScrollBar>

#include <memory>

using mirn::zelchipview::OverviewMap;
using mirn::zelchipview::ZELChipViewDatabase;

namespace zelbench {

namespace {

constexpr int PanDistance = 50; // pixels

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

// Paints at another scale each time, as after a zoom, so that nothing of the previous picture can be reused.
void paintAll(benchmark::State& state, Device& device, double zoom)
{
    ChipWindow& window = device.window();
    window.show(zoom);
    window.settle();
    int further = 0;
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&window] {
            window.changeScaleALittle();
            window.repaint();
        }));
        checkPaintedOnce(state, window.painted().take());
        further += window.settle();
    }
    state.counters["further paints"] = further;
}

// The same with two threads, by the clock on the wall.
void paintAllByTwo(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.settle();
    window.view()->setPaintThreads(2);
    for (auto _ : state) {
        state.SetIterationTime(wallSecondsOf([&window] {
            window.changeScaleALittle();
            window.repaint();
        }));
        checkPaintedOnce(state, window.painted().take());
        window.settle();
    }
    window.view()->setPaintThreads(1);
}

// The host holds every attribute and may have changed its values without notice. The window stays in that state, so it
// is closed afterwards.
void paintHandedOut(benchmark::State& state, Device& device)
{
    device.window();
    for (int loadNumber = 1; loadNumber <= device.elements(); ++loadNumber)
        (void)ZELChipViewDatabase::getInstance()->getGraphicItemAttribute(loadNumber); // is handed out by that
    paintAll(state, device, 1.0);
    device.closeWindow();
}

void paintUnchanged(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.repaint();
    window.settle();
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&window] { window.repaint(); }));
        checkPaintedOnce(state, window.painted().take());
    }
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
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            bar->setValue(bar->value() + distance);
            window.deliver();
        }));
        checkPaintedOnce(state, window.painted().take());
        distance = -distance;
    }
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

// Every item paints itself, as Qt renders a scene without a view.
void paintItems(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.settle();
    QImage picture(ChipWindow::Width, ChipWindow::Height, QImage::Format_RGB32);
    const QRect everything = picture.rect();
    const QRectF shown = window.view()->mapToScene(everything).boundingRect();
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            picture.fill(Qt::white);
            QPainter painter(&picture);
            painter.setRenderHint(QPainter::Antialiasing, true);
            window.scene()->render(&painter, everything, shown);
        }));
    }
}

// KLayout runs in a process of its own and measures itself.
void paintWithLayoutViewer(benchmark::State& state, Device& device)
{
    for (auto _ : state) {
        QString error;
        const auto times = repaintTimesOfLayoutViewer(
            device.parsed().getGraphicItems(), QFile::decodeName(device.folder().c_str()), &error);
        if (!times) {
            state.SkipWithError(qPrintable(error));
            return;
        }
        state.SetIterationTime(times->at("at fit"));
        for (const auto& [zoom, seconds] : *times)
            state.counters[zoom] = seconds;
    }
}

} // namespace

void addPeerBenchmarks(int elements)
{
    addCounted("KLayout", elements, 1, [=](benchmark::State& state) {
        paintWithLayoutViewer(state, Device::ofSize(elements));
    })->Repetitions(1);
}

void addPaintingBenchmarks(int elements)
{
    struct Zoom
    {
        double factor;
        const char* bare;
        const char* full;
    };
    constexpr Zoom Zooms[] = {{1.0, "bare QPainter at fit", "full repaint at fit"},
        {4.0, "bare QPainter at 4x", "full repaint at 4x"}, {30.0, "bare QPainter at 30x", "full repaint at 30x"}};
    for (const Zoom& zoom : Zooms) {
        const double factor = zoom.factor;
        add(zoom.bare, elements, [=](benchmark::State& state) { paintBare(state, Device::ofSize(elements), factor); });
        add(zoom.full, elements, [=](benchmark::State& state) { paintAll(state, Device::ofSize(elements), factor); });
    }
    add("full repaint by two threads", elements,
        [=](benchmark::State& state) { paintAllByTwo(state, Device::ofSize(elements)); });
    add("items one by one at fit", elements,
        [=](benchmark::State& state) { paintItems(state, Device::ofSize(elements)); });
    add("pan by 50 pixels at 4x", elements,
        [=](benchmark::State& state) { pan(state, Device::ofSize(elements), Map::None); });
    add("pan with the overview map", elements,
        [=](benchmark::State& state) { pan(state, Device::ofSize(elements), Map::Shown); });
    add("overview map", elements, [=](benchmark::State& state) { paintMap(state, Device::ofSize(elements)); });
    add("repaint, nothing changed", elements,
        [=](benchmark::State& state) { paintUnchanged(state, Device::ofSize(elements)); });
    add("full repaint, handed out", elements,
        [=](benchmark::State& state) { paintHandedOut(state, Device::ofSize(elements)); });
}

} // namespace zelbench
