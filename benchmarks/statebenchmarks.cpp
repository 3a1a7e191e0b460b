// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsItem>
#include <QSet>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int ProbableSites = 500;
constexpr int DynamicValues = 1000;

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
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            database().highlightedIds().assign(isHighlighted ? QSet<int>() : sites);
            window.deliver();
        }));
        isHighlighted = !isHighlighted;
        checkPaintedOnce(state, window.painted().take());
    }
    database().highlightedIds().clear();
}

void giveDynamicValues(ChipWindow& window, const Device& device, const char* fill = "#a0b0c0")
{
    window.engine().device.clearRecords();
    for (int n = 0; n < DynamicValues; ++n) {
        const auto id = static_cast<unsigned int>(device.scatteredId(n));
        window.engine().device.addRecord(id, {{"fill", fill}, {"tovanel:popup", "site"}});
    }
}

// The engine reports the same values as before, as it does for most elements after a command; nothing is painted.
void refresh(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    giveDynamicValues(window, device);
    for (auto _ : state)
        state.SetIterationTime(secondsOf([&window] { window.scene()->refresh(); }));
    window.engine().device.clearRecords();
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

// The simple way to the same result: for each item, look whether there are values for it.
void walkItems(benchmark::State& state, Device& device)
{
    ChipWindow& window = device.window();
    giveDynamicValues(window, device);
    for (auto _ : state) {
        int found = 0;
        state.SetIterationTime(secondsOf([&] {
            const QMap<QString, GraphicItemDynamicAttribute>& values = database().getGraphicsDynamicInfo();
            const QList<QGraphicsItem*> items = window.scene()->items();
            for (const QGraphicsItem* item : items) {
                const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
                const ZELGraphicItemAttribute* attribute = database().getGraphicItemAttribute(loadNumber);
                found += attribute && values.contains(QString::number(attribute->itemId)) ? 1 : 0;
            }
        }));
        if (found != DynamicValues)
            state.SkipWithError("not all elements were found");
    }
    window.engine().device.clearRecords();
    device.closeWindow(); // it would compare all the attributes that were asked for, at each full repaint
}

} // namespace

void addStateBenchmarks(int elements)
{
    add("select one element", elements, [=](benchmark::State& state) { selectOne(state, Device::ofSize(elements)); });
    add("highlight 500 sites", elements,
        [=](benchmark::State& state) { highlightSites(state, Device::ofSize(elements)); });
    add("refresh 1000 dynamic values", elements,
        [=](benchmark::State& state) { refresh(state, Device::ofSize(elements)); });
    add("change 1000 dynamic values", elements,
        [=](benchmark::State& state) { refreshChanged(state, Device::ofSize(elements)); });
    add("walking all items", elements, [=](benchmark::State& state) { walkItems(state, Device::ofSize(elements)); });
}

} // namespace zelbench
