// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/chipwindow.h"
#include "benchmarks/subjects/designproject.h"
#include "benchmarks/subjects/device.h"
#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "graphics/zelviewlayer.h"
#include "planning/namelayer.h"
#include "planning/planaids.h"
#include "platform/contract/zelplanengine.h"
#include "tests/support/fakeengine.h"

#include <QScrollBar>
#include <QTreeWidget>

#include <memory>
#include <string>
#include <tuple>
#include <utility>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int PanDistance = 50; // pixels
constexpr int PanSteps = 20;
constexpr int CandidateSites = 10000;
constexpr int Supplies = 2000;
constexpr int NearElements = 40; // how far apart, in the drawing's order, most connected elements are
constexpr int LongName = 300; // letters
constexpr int FarEvery = 20; // one of so many connections leads anywhere

// As many connections as the drawing has elements: nearly all of them between elements near each other, as the parts of
// an IP are, and some through the whole drawing.
class ConnectedEngine final : public zeltest::FakeEngine, public zelplanengine
{
public:
    explicit ConnectedEngine(const Device& device)
    {
        for (int n = 0; n < device.elements(); ++n) {
            const int other
                = n % FarEvery == 0 ? device.scatteredId(n) : 1 + (n + n % NearElements) % device.elements();
            m_connections.push_back({"top/r" + std::to_string(n), "top/s" + std::to_string(n), 1 + n, other, {}});
        }
    }

    [[nodiscard]] std::vector<zelconnection> connections() override { return m_connections; }

private:
    std::vector<zelconnection> m_connections;
};

// Every element has a resource, whose name is too long for any site at fit.
class OccupyingEngine final : public zeltest::FakeEngine, public zelplanengine
{
public:
    [[nodiscard]] std::string occupant(const std::string* site) override
    {
        return "top/" + std::string(LongName, 'r') + *site;
    }
};

// The aids on the window of a drawing, for as long as this exists.
class AidedWindow
{
public:
    AidedWindow(Device& device, PlanAids::Connections shown)
        : window(device.window())
        , m_engine(device)
        , m_aids(std::make_unique<PlanAids>(window.view(), nullptr, m_engine))
    {
        m_aids->setConnections(shown);
    }

    ~AidedWindow()
    {
        m_aids.reset();
        const QObjectList parts = window.view()->children();
        for (QObject* part : parts) {
            if (qobject_cast<ZelViewLayer*>(part))
                delete part;
        }
    }

    ChipWindow& window;

private:
    ConnectedEngine m_engine;
    std::unique_ptr<PlanAids> m_aids;
};

void repaint(benchmark::State& state, ChipWindow& window)
{
    window.show(1.0);
    window.settle();
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&window] {
            window.changeScaleALittle();
            window.repaint();
        }));
        checkPaintedOnce(state, window.painted().take());
        window.settle();
    }
}

void repaintWithNames(benchmark::State& state, ChipWindow& window)
{
    OccupyingEngine engine;
    const NameLayer names(window.view(), engine);
    repaint(state, window);
}

// Pans to and fro, far enough that lines come into sight that were not drawn before.
void pan(benchmark::State& state, ChipWindow& window)
{
    window.show(4.0);
    window.repaint();
    window.settle();
    QScrollBar* bar = window.view()->horizontalScrollBar();
    const int start = bar->value();
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % (2 * PanSteps);
        const int distance = PanDistance * (step < PanSteps ? step : 2 * PanSteps - step);
        state.SetIterationTime(secondsOf([&] {
            bar->setValue(start + distance);
            window.deliver();
        }));
        checkPaintedOnce(state, window.painted().take());
    }
}

// A click with the picture that shows it. The first one makes Qt build what finds items.
void click(benchmark::State& state, ChipWindow& window)
{
    window.show(4.0);
    window.repaint();
    window.settle();
    int number = 0;
    const auto clickOnce = [&] {
        ++number;
        window.click(QPoint((number * 619) % ChipWindow::Width, (number * 367) % ChipWindow::Height));
        window.deliver();
    };
    clickOnce();
    for (auto _ : state)
        state.SetIterationTime(secondsOf(clickOnce));
    window.scene()->clearSelectedItems();
    window.settle();
}

// From the selection of a resource to the picture with its candidates, when the engine was not asked before.
void showCandidates(benchmark::State& state, Device& device)
{
    const DesignProject project(CandidateSites, Supplies);
    QString error;
    QStringList warnings;
    const auto engine = mirn::zelengine::ReferenceEngine::open(project.path(), &error, &warnings);
    ChipWindow& window = device.window();
    window.show(1.0);
    window.repaint();
    window.settle();
    QTreeWidget tree;
    auto* row = new QTreeWidgetItem(&tree); // owned by the tree
    row->setData(0, RESOURCENAME, DesignProject::supply(0));
    tree.setCurrentItem(row);
    PlanAids aids(window.view(), &tree, *engine);
    aids.setConnections(PlanAids::Connections::Off);
    window.settle();
    for (auto _ : state) {
        state.SetIterationTime(secondsOf([&] {
            aids.refresh();
            window.deliver();
        }));
        checkPaintedOnce(state, window.painted().take());
    }
    tree.clear();
    aids.settle();
}

} // namespace

void addPlanningBenchmarks(int elements)
{
    using Measured = void (*)(benchmark::State & state, ChipWindow & window);
    const std::pair<const char*, Measured> measured[] = {{"plain full repaint", &repaint}, {"plain pan", &pan},
        {"plain click", &click}, {"full repaint, names without room", &repaintWithNames}};
    const std::tuple<const char*, Measured, PlanAids::Connections> aided[]
        = {{"full repaint, aids off", &repaint, PlanAids::Connections::Off},
            {"full repaint, all connections", &repaint, PlanAids::Connections::All},
            {"pan, all connections", &pan, PlanAids::Connections::All},
            {"click, all connections", &click, PlanAids::Connections::All}};
    for (const auto& [name, measure] : measured)
        add(name, elements,
            [=, measure = measure](benchmark::State& state) { measure(state, Device::ofSize(elements).window()); });
    for (const auto& [name, measure, shown] : aided)
        add(name, elements, [=, measure = measure, shown = shown](benchmark::State& state) {
            AidedWindow window(Device::ofSize(elements), shown);
            measure(state, window.window);
        });
    add("candidates", elements, [=](benchmark::State& state) { showCandidates(state, Device::ofSize(elements)); });
}

} // namespace zelbench
