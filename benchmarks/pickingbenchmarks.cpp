// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/results/pairs.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "chipview/zelchipgui.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"

#include <QApplication>
#include <QCursor>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTreeWidget>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int Clicks = 200;
constexpr int DragMoves = 2000;
constexpr int BandsOfTurn = 8;
constexpr QPoint TopLeft(0, 0);
constexpr QPoint BottomRight(ChipWindow::Width - 1, ChipWindow::Height - 1);

// Returns points all over the viewport, in an order without a pattern.
QPoint spot(int number)
{
    return {(number * 619) % ChipWindow::Width, (number * 367) % ChipWindow::Height};
}

// Measures a click, before anything is painted.
void click(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(4.0);
    window.settle();
    int number = 0;
    int hits = 0;
    for (auto _ : state) {
        const QPoint position = spot(++number);
        state.SetIterationTime(secondsOf([&] { window.click(position); }));
        hits += ZELChipViewDatabase::getInstance()->selectedIds().isEmpty() ? 0 : 1;
    }
    if (hits == 0)
        state.SkipWithError("no click met an element");
    window.scene()->clearSelectedItems();
    window.settle();
}

double secondsOfItemsByShape(benchmark::State& state, const Device& device, const ChipWindow& window)
{
    const QRectF everything = window.view()->mapToScene(QRect(TopLeft, BottomRight)).boundingRect();
    qsizetype found = 0;
    const double seconds
        = secondsOf([&] { found = window.scene()->items(everything, Qt::IntersectsItemShape).size(); });
    if (found != device.elements())
        state.SkipWithError("not everything was found");
    return seconds;
}

void itemsByShape(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.scene()->makeAllItems();
    window.show(1.0);
    window.settle();
    for (auto _ : state)
        state.SetIterationTime(secondsOfItemsByShape(state, device, window));
    device.closeWindow();
}

// Measures the release of a rubber band around the whole drawing, before anything is painted.
void rubberBand(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.scene()->makeAllItems();
    window.show(1.0);
    const auto deselect = [&window] {
        window.scene()->clearSelectedItems();
        window.settle();
    };
    const auto selectAll = [&] {
        deselect();
        window.mouse(QEvent::MouseButtonPress, TopLeft);
        window.mouse(QEvent::MouseMove, BottomRight);
        const double seconds = secondsOf([&window] { window.mouse(QEvent::MouseButtonRelease, BottomRight); });
        if (ZELChipViewDatabase::getInstance()->selectedIds().ids().size() != device.elements())
            state.SkipWithError("not everything was selected");
        return seconds;
    };
    const auto find = [&] { return secondsOfItemsByShape(state, device, window); };
    measureInTurns(state, {find, 1, deselect, {}}, {selectAll, BandsOfTurn, {}, {}});
    device.closeWindow();
}

void selectFirstRow(const ChipWindow& window)
{
    auto* tree = window.window().findChild<QTreeWidget*>();
    tree->setCurrentItem(tree->topLevelItem(0));
}

template <typename Event> void sendDrag(const ChipWindow& window, QPoint position, const QMimeData& data)
{
    Event event(position, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.view()->viewport(), &event);
}

// Drags a resource over the drawing, a few pixels at a time and from one element to the next.
void dragMove(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.show(4.0);
    window.repaint();
    window.settle();
    selectFirstRow(window);
    const QMimeData data;
    sendDrag<QDragEnterEvent>(window, TopLeft, data);
    window.engine().calls.clear();
    int moves = 0;
    for (auto _ : state) {
        ++moves;
        const QPoint position((3 * moves) % ChipWindow::Width, (2 * moves) % ChipWindow::Height);
        QCursor::setPos(window.view()->viewport()->mapToGlobal(position));
        state.SetIterationTime(secondsOf([&] { sendDrag<QDragMoveEvent>(window, position, data); }));
    }
    if (window.engine().calls.empty())
        state.SkipWithError("the drag met no element");
    QDragLeaveEvent leave;
    QApplication::sendEvent(window.view()->viewport(), &leave);
    window.settle();
}

} // namespace

void addPickingBenchmarks(int elements)
{
    takeSmallest(addCounted(
        "click at 4x", elements, Clicks, [=](benchmark::State& state) { click(state, Device::ofSize(elements)); }));
    add("QGraphicsScene::items by shape", elements,
        [=](benchmark::State& state) { itemsByShape(state, Device::ofSize(elements)); });
    addPairs("rubber band over everything", elements,
        [=](benchmark::State& state) { rubberBand(state, Device::ofSize(elements)); });
    takeSmallest(addCounted("drag move at 4x", elements, DragMoves,
        [=](benchmark::State& state) { dragMove(state, Device::ofSize(elements)); }));
}

} // namespace zelbench
