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

#include <QCoreApplication>
#include <QTreeWidget>

#include <algorithm>
#include <functional>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int Rows = 20000;
constexpr int Picks = 100;
constexpr QPoint TopLeft(0, 0);
constexpr QPoint BottomRight(ChipWindow::Width - 1, ChipWindow::Height - 1);

QTreeWidget& treeOf(const ChipWindow& window)
{
    return *window.window().findChild<QTreeWidget*>();
}

QString rowName(int row)
{
    return QStringLiteral("resource_%1").arg(row);
}

// A single branch with all rows is the worst case for code that searches for a row among its siblings. The rows'
// elements are scattered over the drawing; in a small drawing, several rows share an element.
void giveRows(ChipWindow& window, const Device& device)
{
    window.engine().clearCells();
    zeltreeviewcell* branch = window.engine().addCell(nullptr, "all");
    for (int row = 0; row < Rows; ++row)
        window.engine().addCell(
            branch, rowName(row).toStdString(), "DCUCHANNEL", std::to_string(device.scatteredId(row)));
}

void refreshTree(ChipWindow& window)
{
    window.window().refresh(REFRESH_TREE);
    QCoreApplication::processEvents();
}

// Returns the window with all rows, their branch open, and nothing left to paint.
ChipWindow& windowWithRows(Device& device)
{
    ChipWindow& window = device.windowForRows();
    window.show(1.0);
    QTreeWidget& tree = treeOf(window);
    if (tree.topLevelItemCount() != 1 || tree.topLevelItem(0)->childCount() != Rows) {
        giveRows(window, device);
        refreshTree(window);
    }
    tree.expandAll();
    window.scene()->clearSelectedItems();
    window.settle();
    return window;
}

// Measures how long Qt alone needs to show as many rows with as many texts, sorted.
double secondsOfBareTree()
{
    QTreeWidget tree;
    tree.setColumnCount(2);
    tree.setSortingEnabled(true);
    tree.show();
    QCoreApplication::processEvents();
    return secondsOf([&tree] {
        auto* branch = new QTreeWidgetItem({QStringLiteral("all"), QString()}); // owned by the tree
        for (int row = 0; row < Rows; ++row)
            new QTreeWidgetItem(branch, {rowName(row), QString()}); // owned by the branch
        tree.addTopLevelItem(branch);
        tree.expandAll();
        QCoreApplication::processEvents();
    });
}

void fillBareTree(benchmark::State& state)
{
    for (auto _ : state)
        state.SetIterationTime(secondsOfBareTree());
}

// Measures the first refresh after a design was opened.
void fillTree(benchmark::State& state, Device& device)
{
    ChipWindow& window = windowWithRows(device);
    for (auto _ : state) {
        window.engine().clearCells();
        refreshTree(window);
        giveRows(window, device);
        state.SetIterationTime(secondsOf([&window] {
            refreshTree(window);
            treeOf(window).expandAll();
            QCoreApplication::processEvents();
        }));
        if (treeOf(window).topLevelItem(0)->childCount() != Rows)
            state.SkipWithError("not all rows are there");
    }
}

void refreshFullTree(benchmark::State& state, Device& device)
{
    ChipWindow& window = windowWithRows(device);
    const auto refreshOnce = [&] {
        const double seconds = secondsOf([&window] { refreshTree(window); });
        if (!treeOf(window).topLevelItem(0)->isExpanded())
            state.SkipWithError("the branch did not stay open");
        return seconds;
    };
    measureInTurns(state, {&secondsOfBareTree, 1, {}, {}}, {refreshOnce, 1, {}, {}});
}

// Measures opening the closed branch with all its rows, until they are painted.
void openBranch(benchmark::State& state, Device& device, const std::function<void(const ChipWindow&)>& open)
{
    ChipWindow& window = windowWithRows(device);
    QTreeWidget& tree = treeOf(window);
    double opening = 0.0;
    for (auto _ : state) {
        tree.collapseAll();
        tree.setCurrentItem(tree.topLevelItem(0));
        window.settle();
        const double seconds = secondsOf([&] {
            open(window);
            QCoreApplication::processEvents();
        });
        state.SetIterationTime(seconds);
        opening += seconds;
        if (!tree.topLevelItem(0)->isExpanded() || !tree.topLevelItem(0)->child(Rows - 1)->isExpanded())
            state.SkipWithError("not everything is open");
    }
    state.counters["per row"] = benchmark::Counter(opening / Rows, benchmark::Counter::kAvgIterations);
}

// Measures selecting a row, until its elements are painted.
void selectRows(benchmark::State& state, Device& device, bool selectsAll)
{
    ChipWindow& window = windowWithRows(device);
    QTreeWidget& tree = treeOf(window);
    const int expected = selectsAll ? std::min(Rows, device.elements()) : 1;
    int number = 0;
    for (auto _ : state) {
        ++number;
        QTreeWidgetItem* branch = tree.topLevelItem(0);
        QTreeWidgetItem* row = selectsAll ? branch : branch->child(number * 7 % Rows);
        tree.setCurrentItem(nullptr);
        window.scene()->clearSelectedItems();
        window.settle();
        state.SetIterationTime(secondsOf([&] {
            tree.setCurrentItem(row);
            QCoreApplication::processEvents();
        }));
        if (ZELChipViewDatabase::getInstance()->selectedIds().ids().size() != expected)
            state.SkipWithError("not what belongs to the row was selected");
    }
}

// Measures clicking an element until its row is selected, without painting.
void clickElements(benchmark::State& state, Device& device)
{
    ChipWindow& window = windowWithRows(device);
    window.show(4.0);
    window.settle();
    int number = 0;
    int found = 0;
    for (auto _ : state) {
        ++number;
        const QPoint position((number * 619) % ChipWindow::Width, (number * 367) % ChipWindow::Height);
        treeOf(window).setCurrentItem(nullptr);
        state.SetIterationTime(secondsOf([&] { window.click(position); }));
        found += treeOf(window).currentItem() ? 1 : 0;
    }
    if (found == 0)
        state.SkipWithError("no click found a row");
    window.scene()->clearSelectedItems();
    window.settle();
}

// Measures the release of a rubber band over all elements until a row is selected, without painting.
void bandOverRows(benchmark::State& state, Device& device)
{
    ChipWindow& window = windowWithRows(device);
    for (auto _ : state) {
        window.scene()->clearSelectedItems();
        treeOf(window).setCurrentItem(nullptr);
        window.settle();
        window.mouse(QEvent::MouseButtonPress, TopLeft);
        window.mouse(QEvent::MouseMove, BottomRight);
        state.SetIterationTime(secondsOf([&window] { window.mouse(QEvent::MouseButtonRelease, BottomRight); }));
        if (ZELChipViewDatabase::getInstance()->selectedIds().ids().size() != device.elements()
            || !treeOf(window).currentItem())
            state.SkipWithError("not everything was selected");
    }
}

// Measures the next selection of a row after a rubber band over elements without rows, which adds a connection of the
// tree's signal for each of them.
void selectRowAfterBand(benchmark::State& state, Device& device)
{
    ChipWindow& window = windowWithRows(device);
    QTreeWidget& tree = treeOf(window);
    for (auto _ : state) {
        tree.setCurrentItem(nullptr);
        window.mouse(QEvent::MouseButtonPress, TopLeft);
        window.mouse(QEvent::MouseMove, BottomRight);
        window.mouse(QEvent::MouseButtonRelease, BottomRight);
        window.settle();
        state.SetIterationTime(secondsOf([&tree] { tree.setCurrentItem(tree.topLevelItem(0)); }));
    }
    window.scene()->clearSelectedItems();
    window.settle();
}

} // namespace

// The rows that open a branch come first: filling the tree again and again scatters the memory that Qt needs for each
// row that opens.
void addResourceBenchmarks(int elements)
{
    add("expand all rows", elements, [=](benchmark::State& state) {
        openBranch(
            state, Device::ofSize(elements), [](const ChipWindow& window) { window.window().expandAllTreeItems(); });
    });
    add("expand a branch", elements, [=](benchmark::State& state) {
        openBranch(
            state, Device::ofSize(elements), [](const ChipWindow&) { ZELChipViewDatabase::getInstance()->expandIP(); });
    })->Repetitions(FewRepetitions);
    add("bare QTreeWidget", elements, [](benchmark::State& state) { fillBareTree(state); });
    add("fill the tree", elements, [=](benchmark::State& state) { fillTree(state, Device::ofSize(elements)); });
    addPairs("refresh the tree", elements,
        [=](benchmark::State& state) { refreshFullTree(state, Device::ofSize(elements)); });
    add("select a row", elements, [=](benchmark::State& state) { selectRows(state, Device::ofSize(elements), false); });
    add("select all rows", elements, [=](benchmark::State& state) {
        selectRows(state, Device::ofSize(elements), true);
    })->Repetitions(FewRepetitions);
    addCounted("click with rows", elements, Picks,
        [=](benchmark::State& state) { clickElements(state, Device::ofSize(elements)); });
    add("rubber band with rows", elements, [=](benchmark::State& state) {
        bandOverRows(state, Device::ofSize(elements));
    })->Repetitions(FewRepetitions);
    addCounted("select a row after a band", elements, 1, [=](benchmark::State& state) {
        selectRowAfterBand(state, Device::ofSize(elements));
    })->Repetitions(FewRepetitions);
}

} // namespace zelbench
