// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/results/pairs.h"
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

#include <QDeadlineTimer>
#include <QScrollBar>
#include <QTreeWidget>

#include <functional>
#include <memory>
#include <string>
#include <tuple>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

constexpr int PanDistance = 50; // pixels
constexpr int PanSteps = 20;
constexpr int IdleTime = 100; // milliseconds
constexpr int RepaintsOfTurn = 3;
constexpr int ClicksOfTurn = 20;
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
    AidedWindow(const ChipWindow& window, zelchipengine& engine, PlanAids::Connections shown)
        : m_view(window.view())
        , m_aids(std::make_unique<PlanAids>(m_view, nullptr, engine))
    {
        m_aids->setConnections(shown);
    }

    ~AidedWindow()
    {
        m_aids.reset();
        const QObjectList parts = m_view->children();
        for (QObject* part : parts) {
            if (qobject_cast<ZelViewLayer*>(part))
                delete part;
        }
    }

private:
    ZelGraphicsView* const m_view;
    std::unique_ptr<PlanAids> m_aids;
};

// What is done with a window, alike without aids and with them: getting ready, and then a turn of so many actions.
struct Action
{
    std::function<void(ChipWindow&)> begin;
    std::function<double(benchmark::State&, ChipWindow&)> act;
    int times;
};

Action repainting()
{
    const auto begin = [](ChipWindow& window) {
        window.show(1.0);
        window.settle();
        window.changeScaleALittle();
        window.repaint(); // once for everything that is done only once
        window.settle();
    };
    const auto repaint = [](benchmark::State& state, ChipWindow& window) {
        const double seconds = secondsOf([&window] {
            window.changeScaleALittle();
            window.repaint();
        });
        checkPaintedOnce(state, window.painted().take());
        window.settle();
        return seconds;
    };
    return {begin, repaint, RepaintsOfTurn};
}

void paintAt4x(ChipWindow& window)
{
    window.show(4.0);
    window.repaint();
    window.settle();
}

// Pans to and fro, far enough that lines come into sight that were not painted before. Somebody who pans has looked at
// the drawing first, and the window has done what it does when it is idle.
Action panning()
{
    const auto step = std::make_shared<int>(0);
    const auto begin = [step](ChipWindow& window) {
        paintAt4x(window);
        for (const QDeadlineTimer idle(IdleTime); !idle.hasExpired();)
            window.settle();
        *step = 0;
    };
    const auto pan = [step](benchmark::State& state, ChipWindow& window) {
        QScrollBar* bar = window.view()->horizontalScrollBar();
        const int distance = ++*step <= PanSteps ? PanDistance : -PanDistance;
        const double seconds = secondsOf([&] {
            bar->setValue(bar->value() + distance);
            window.deliver();
        });
        checkPaintedOnce(state, window.painted().take());
        return seconds;
    };
    return {begin, pan, 2 * PanSteps};
}

// Clicks with the picture that shows it. The first one makes Qt build what finds items.
Action clicking()
{
    const auto number = std::make_shared<int>(0);
    const auto click = [number](ChipWindow& window) {
        ++*number;
        window.click(QPoint((*number * 619) % ChipWindow::Width, (*number * 367) % ChipWindow::Height));
        window.deliver();
    };
    const auto begin = [number, click](ChipWindow& window) {
        window.scene()->clearSelectedItems();
        paintAt4x(window);
        *number = 0;
        click(window);
    };
    const auto measured = [click](benchmark::State&, ChipWindow& window) { return secondsOf([&] { click(window); }); };
    return {begin, measured, ClicksOfTurn};
}

// Compares an action on the plain window with the same one while what `add` returns exists.
void compare(
    benchmark::State& state, Device& device, const Action& action, const std::function<std::shared_ptr<void>()>& add)
{
    ChipWindow& window = device.window();
    std::shared_ptr<void> added;
    const auto act = [&] { return action.act(state, window); };
    Side plain{act, action.times, [&] { action.begin(window); }, {}};
    Side subject = plain;
    subject.prepare = [&] {
        added = add();
        action.begin(window);
    };
    subject.restore = [&added] { added.reset(); };
    measureInTurns(state, plain, subject);
    window.scene()->clearSelectedItems();
    window.settle();
}

void compareAided(benchmark::State& state, Device& device, const Action& action, PlanAids::Connections shown)
{
    ConnectedEngine engine(device);
    compare(state, device, action, [&] { return std::make_shared<AidedWindow>(device.window(), engine, shown); });
}

void compareNames(benchmark::State& state, Device& device)
{
    OccupyingEngine engine;
    compare(state, device, repainting(), [&] { return std::make_shared<NameLayer>(device.window().view(), engine); });
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
    using Connections = PlanAids::Connections;
    const std::tuple<const char*, Action (*)(), Connections> aided[] = {
        {"full repaint, aids off", &repainting, Connections::Off},
        {"full repaint, all connections", &repainting, Connections::All},
        {"pan, all connections", &panning, Connections::All}, {"click, all connections", &clicking, Connections::All}};
    for (const auto& [name, action, shown] : aided)
        addPairs(name, elements, [=, action = action, shown = shown](benchmark::State& state) {
            compareAided(state, Device::ofSize(elements), action(), shown);
        });
    addPairs("full repaint, names without room", elements,
        [=](benchmark::State& state) { compareNames(state, Device::ofSize(elements)); });
    add("candidates", elements, [=](benchmark::State& state) { showCandidates(state, Device::ofSize(elements)); });
}

} // namespace zelbench
