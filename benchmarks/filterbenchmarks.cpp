// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/device.h"
#include "chipview/zelchipviewdatabase.h"

#include <QCheckBox>
#include <QFile>
#include <QMenu>
#include <QTemporaryFile>

#include <string>
#include <utility>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int ManyKinds = 10000;
constexpr int UsualKinds = 100;

// Has the window's menu offer the elements with the ids from 1 to `ids`, in so many kinds. Afterwards the menu is as it
// was before.
class FilteredWindow
{
public:
    FilteredWindow(Device& device, int ids, int kinds)
        : window(device.window())
    {
        QByteArray text;
        for (int id = 1; id <= ids; ++id)
            text += "\"kind " + QByteArray::number(id % kinds) + "\" " + QByteArray::number(id) + '\n';
        if (!m_file.open() || m_file.write(text) != text.size() || !m_file.flush())
            qFatal("no filter file can be written");
        m_before = std::exchange(window.engine().device.filter, QFile::encodeName(m_file.fileName()).toStdString());
    }

    ~FilteredWindow()
    {
        window.engine().device.filter = m_before;
        buildMenu();
    }

    // Returns the seconds that it takes.
    double buildMenu()
    {
        delete database().getViewFilterMenu(); // else it would stay
        return secondsOf([this] { database().setChipEngine(&window.engine()); });
    }

    [[nodiscard]] static QList<QCheckBox*> boxes()
    {
        return database().getViewFilterMenu()->findChildren<QCheckBox*>();
    }

    [[nodiscard]] static ZELChipViewDatabase& database() { return *ZELChipViewDatabase::getInstance(); }

    ChipWindow& window;

private:
    QTemporaryFile m_file;
    std::string m_before;
};

// Measures setting an engine whose device has many kinds of elements: the controller builds the menu with their boxes.
void buildMenu(benchmark::State& state, Device& device)
{
    FilteredWindow filtered(device, ManyKinds, ManyKinds);
    for (auto _ : state) {
        state.SetIterationTime(filtered.buildMenu());
        if (FilteredWindow::boxes().size() != ManyKinds + 1)
            state.SkipWithError("not all kinds have a box");
    }
}

// Measures ticking the box for all kinds, whose elements are all there are, until the picture shows it.
void tickAll(benchmark::State& state, Device& device)
{
    FilteredWindow filtered(device, device.elements(), UsualKinds);
    filtered.buildMenu();
    filtered.window.show(1.0);
    double ticking = 0.0;
    for (auto _ : state) {
        QCheckBox* all = FilteredWindow::boxes().constFirst();
        all->setChecked(false);
        filtered.window.settle();
        const double seconds = secondsOf([&] {
            all->setChecked(true);
            filtered.window.deliver();
        });
        checkPaintedOnce(state, filtered.window.painted().take());
        if (FilteredWindow::database().filteredIds().ids().size() != device.elements())
            state.SkipWithError("not everything was ticked");
        state.SetIterationTime(seconds);
        ticking += seconds;
    }
    state.counters["per element"] = benchmark::Counter(ticking / device.elements(), benchmark::Counter::kAvgIterations);
}

} // namespace

void addFilterBenchmarks(int elements)
{
    add("filter menu", elements, [=](benchmark::State& state) {
        buildMenu(state, Device::ofSize(elements));
    })->Repetitions(FewRepetitions);
    add("tick all kinds", elements, [=](benchmark::State& state) { tickAll(state, Device::ofSize(elements)); });
}

} // namespace zelbench
