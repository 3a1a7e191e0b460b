// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/results/pairs.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "benchmarks/subjects/yardsticks.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsItem>
#include <QSet>

#include <utility>
#include <vector>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int ProbableSites = 500;
constexpr int DynamicValues = 1000;
constexpr int ChangesOfTurn = 10;
constexpr int RefreshesOfTurn = 200;
constexpr int MostFills = 100000; // the records of a million would take two gigabytes

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

// Returns the window with the whole drawing painted and nothing left to paint.
ChipWindow& restingWindow(Device& device)
{
    ChipWindow& window = device.window();
    window.show(1.0);
    window.repaint();
    window.settle();
    return window;
}

// Marks or unmarks one element, until the picture is up to date.
void selectOne(benchmark::State& state, Device& device)
{
    ChipWindow& window = restingWindow(device);
    const int id = 1 + device.elements() / 2;
    bool isSelected = false;
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            if (isSelected)
                database().removeSelectedItem(id);
            else
                database().addSelctedItem(id, false);
            window.deliver();
        }));
        isSelected = !isSelected;
        checkPaintedOnce(state, window.painted().take());
    }
    database().removeSelectedItem(id);
}

// Shows or hides the probable sites, until the picture is up to date.
void highlightSites(benchmark::State& state, Device& device)
{
    ChipWindow& window = restingWindow(device);
    QSet<int> sites;
    for (int n = 0; n < ProbableSites; ++n)
        sites.insert(device.scatteredId(n));
    bool isHighlighted = false;
    const auto change = [&] {
        const double seconds = secondsOf([&] {
            database().highlightedIds().assign(isHighlighted ? QSet<int>() : sites);
            window.deliver();
        });
        isHighlighted = !isHighlighted;
        checkPaintedOnce(state, window.painted().take());
        return seconds;
    };
    measureInTurns(state, itemsSide(device), {change, ChangesOfTurn, {}, {}});
    database().highlightedIds().clear();
    device.closeWindow(); // it has all items now
}

void giveDynamicValues(ChipWindow& window, const Device& device, const char* fill = "#a0b0c0")
{
    window.engine().device.clearRecords();
    for (int n = 0; n < DynamicValues; ++n) {
        const auto id = static_cast<unsigned int>(device.scatteredId(n));
        window.engine().device.addRecord(id, {{"fill", fill}, {"tovanel:popup", "site"}});
    }
}

// Reports a colour for every element, and another one at each second refresh.
class FillingEngine
{
public:
    FillingEngine(ChipWindow& window, int elements)
        : m_window(window)
        , m_chip(window.engine().device)
    {
        for (const char* fill : {"#c0b0a0", "#a0b0c0"}) {
            m_chip.clearRecords();
            for (int id = 1; id <= elements; ++id)
                m_chip.addRecord(static_cast<unsigned int>(id), {{"fill", fill}});
            m_records.push_back(m_chip.recordList);
            m_window.scene()->refresh(); // so that the first of the changes is one as well
        }
        m_window.settle();
    }

    ~FillingEngine()
    {
        m_chip.clearRecords();
        m_chip.storage.clear();
        m_chip.attributes.clear();
    }

    void changeAll()
    {
        m_chip.recordList = m_records.front();
        std::swap(m_records.front(), m_records.back());
    }

private:
    ChipWindow& m_window;
    zeltest::FakeChip& m_chip;
    std::vector<std::vector<const zelchiprecord*>> m_records;
};

// All elements get another colour, until the picture shows it.
void refreshAllFills(benchmark::State& state, Device& device)
{
    ChipWindow& window = restingWindow(device);
    FillingEngine engine(window, device.elements());
    double refreshing = 0.0;
    for (auto _ : state) {
        engine.changeAll();
        const double seconds = secondsOf([&window] {
            window.scene()->refresh();
            window.deliver();
        });
        checkPaintedOnce(state, window.painted().take());
        state.SetIterationTime(seconds);
        refreshing += seconds;
    }
    state.counters["per element"]
        = benchmark::Counter(refreshing / device.elements(), benchmark::Counter::kAvgIterations);
}

// The simple way to the values of a refresh: for each item, look whether there are some for it.
double secondsOfWalk(benchmark::State& state, const ChipWindow& window)
{
    int found = 0;
    const double seconds = secondsOf([&] {
        const QMap<QString, GraphicItemDynamicAttribute>& values = database().getGraphicsDynamicInfo();
        const QList<QGraphicsItem*> items = window.scene()->items();
        for (const QGraphicsItem* item : items) {
            // Not from the controller, which would compare the attributes it was asked for at each full repaint.
            const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
            const ZELGraphicItemAttribute* attribute = database().attributes().find(loadNumber);
            found += attribute && values.contains(QString::number(attribute->itemId)) ? 1 : 0;
        }
    });
    if (found != DynamicValues)
        state.SkipWithError("not all elements were found");
    return seconds;
}

void walkItems(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.scene()->makeAllItems();
    giveDynamicValues(window, device);
    for (auto _ : state)
        state.SetIterationTime(secondsOfWalk(state, window));
    window.engine().device.clearRecords();
    device.closeWindow();
}

// The engine reports the same values as before, as it does for most elements after a command; nothing is painted.
void refresh(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    window.scene()->makeAllItems();
    giveDynamicValues(window, device);
    const auto walk = [&] { return secondsOfWalk(state, window); };
    const auto refreshOnce = [&window] { return secondsOf([&window] { window.scene()->refresh(); }); };
    measureInTurns(state, {walk, 1, {}, {}}, {refreshOnce, RefreshesOfTurn, {}, {}});
    window.engine().device.clearRecords();
    device.closeWindow();
}

// All colours change; painting them is not measured.
void refreshChanged(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    bool isOther = false;
    for (auto _ : state) {
        isOther = !isOther;
        giveDynamicValues(window, device, isOther ? "#c0b0a0" : "#a0b0c0");
        state.SetIterationTime(secondsOf([&window] { window.scene()->refresh(); }));
        window.settle();
    }
    window.engine().device.clearRecords();
}

} // namespace

void addStateBenchmarks(int elements)
{
    takeSmallest(add(
        "select one element", elements, [=](benchmark::State& state) { selectOne(state, Device::ofSize(elements)); }));
    addPairs("highlight 500 sites", elements,
        [=](benchmark::State& state) { highlightSites(state, Device::ofSize(elements)); });
    addPairs("refresh 1000 dynamic values", elements,
        [=](benchmark::State& state) { refresh(state, Device::ofSize(elements)); });
    add("change 1000 dynamic values", elements,
        [=](benchmark::State& state) { refreshChanged(state, Device::ofSize(elements)); });
    if (elements <= MostFills)
        add("refresh, all fills change", elements,
            [=](benchmark::State& state) { refreshAllFills(state, Device::ofSize(elements)); });
    add("walking all items", elements, [=](benchmark::State& state) { walkItems(state, Device::ofSize(elements)); });
}

} // namespace zelbench
