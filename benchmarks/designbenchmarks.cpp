// SPDX-License-Identifier: MIT
#include "benchmarks/benchmarks.h"
#include "benchmarks/results/measure.h"
#include "benchmarks/subjects/designproject.h"
#include "engine/referenceengine.h"
#include "engine/search/placementsearch.h"
#include "host/design/designeditor.h"
#include "host/design/designtcl.h"
#include "host/tcl/tclinterpreter.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryFile>

#include <algorithm>
#include <cmath>
#include <list>
#include <memory>
#include <vector>

using mirn::zelchip::DesignEditor;
using mirn::zelchip::TclInterpreter;
using mirn::zelchip::TclResult;
using mirn::zelengine::ReferenceEngine;

namespace zelbench {

namespace {

constexpr int Commands = 10000; // in a batch
constexpr int CheckedSupplies = 2000; // placed ones; the other resources are not
constexpr int SearchedSupplies = 1200; // with the parts of the IPs 2,000 resources to place
constexpr int SearchedIps = 200;
constexpr int SearchedIpChannels = 3;
constexpr int ManySupplies = 20000;
constexpr int DropQueries = 10000;
constexpr int MostSites = 100000; // a device file of a million sites would be 80 megabytes

std::unique_ptr<ReferenceEngine> openEngine(const DesignProject& project)
{
    QString error;
    QStringList warnings;
    std::unique_ptr<ReferenceEngine> engine = ReferenceEngine::open(project.path(), &error, &warnings);
    if (!engine)
        qFatal("%s", qPrintable(error));
    return engine;
}

// The project and its engine, for the number of sites that was asked for last.
struct PlannedDevice
{
    explicit PlannedDevice(int wantedSites)
        : sites(wantedSites)
        , project(wantedSites, Commands)
        , engine(openEngine(project))
    { }

    static PlannedDevice& ofSize(int sites)
    {
        static std::unique_ptr<PlannedDevice> current;
        if (!current || current->sites != sites)
            current = std::make_unique<PlannedDevice>(sites);
        return *current;
    }

    const int sites;
    const DesignProject project;
    const std::unique_ptr<ReferenceEngine> engine;
};

// Parses the device file's JSON and does nothing with it.
void parseJsonOnly(benchmark::State& state, const PlannedDevice& device)
{
    for (auto _ : state) {
        bool isParsed = false;
        state.SetIterationTime(secondsOf([&] {
            QFile file(device.project.deviceFile());
            isParsed = file.open(QIODevice::ReadOnly) && !QJsonDocument::fromJson(file.readAll()).isNull();
        }));
        if (!isParsed)
            state.SkipWithError("the device file was not read");
    }
}

void openDevice(benchmark::State& state, const PlannedDevice& device)
{
    for (auto _ : state)
        state.SetIterationTime(secondsOf([&device] { openEngine(device.project); }));
}

// Asks about another site each time.
void canDrop(benchmark::State& state, const PlannedDevice& device)
{
    const std::string resource = DesignProject::supply(0).toStdString();
    int number = 0;
    int allowed = 0;
    for (auto _ : state) {
        const std::string site = std::to_string(DesignProject::supplySite(++number % device.sites));
        bool isAllowed = false;
        state.SetIterationTime(secondsOf([&] { isAllowed = device.engine->canDrop(&resource, &site); }));
        allowed += isAllowed ? 1 : 0;
    }
    if (allowed == 0)
        state.SkipWithError("no site was allowed");
}

void showProbableSites(benchmark::State& state, const PlannedDevice& device, const QString& name)
{
    const std::string resource = name.toStdString();
    const std::string site = std::to_string(DesignProject::supplySite(0));
    std::size_t found = 0;
    for (auto _ : state) {
        std::list<std::string> items;
        state.SetIterationTime(secondsOf([&] { device.engine->showProbPlaceItem(&resource, &site, items); }));
        found = items.size();
    }
    if (found == 0)
        state.SkipWithError("no site was found");
    state.counters["sites"] = static_cast<double>(found);
}

// Every second site is taken, so that the rules have something to check.
void probableSites(benchmark::State& state, PlannedDevice& device)
{
    std::vector<mirn::zelengine::Placement> taken;
    for (int n = 1; n < std::min(Commands, device.sites / 2); ++n)
        taken.push_back({device.engine->design().find(DesignProject::supply(n)), DesignProject::supplySite(2 * n)});
    device.engine->setSites(taken);
    showProbableSites(state, device, DesignProject::supply(0));
    for (mirn::zelengine::Placement& placement : taken)
        placement.site = -1;
    device.engine->setSites(taken);
}

// Places all supplies that are checked one beside the other, some of them in banks of another voltage, before asking.
void checkDesign(benchmark::State& state, PlannedDevice& device)
{
    std::vector<mirn::zelengine::Placement> taken;
    for (int n = 0; n < CheckedSupplies; ++n)
        taken.push_back({device.engine->design().find(DesignProject::supply(n)), DesignProject::supplySite(n + 1)});
    device.engine->setSites(taken);
    std::size_t found = 0;
    for (auto _ : state) {
        device.engine->setSites(taken); // else the engine would return what it found before
        state.SetIterationTime(secondsOf([&] { found = device.engine->problems().size(); }));
    }
    if (found == 0)
        state.SkipWithError("no problem was found");
    state.counters["problems"] = static_cast<double>(found);
    for (mirn::zelengine::Placement& placement : taken)
        placement.site = -1;
    device.engine->setSites(taken);
}

// Supplies of two voltages, and IPs of three channels with a PLL, which each need two units side by side.
mirn::zelengine::Design unplacedDesign(int supplies, int ips)
{
    mirn::zelengine::Design design(QStringLiteral("top"));
    const auto add = [&design](int parent, const char* type, const QString& voltage = {}) {
        mirn::zelengine::Resource resource;
        resource.name = QString::number(design.all().size());
        resource.type = mirn::zelengine::findType(mirn::zelengine::standardTypes(), QLatin1String(type));
        resource.properties.insert(QStringLiteral("voltage"), voltage);
        return design.add(parent, resource);
    };
    for (int n = 0; n < supplies; ++n)
        add(-1, "UVCCIO", n % 2 == 0 ? QStringLiteral("1.8 V") : QStringLiteral("3.3 V"));
    for (int n = 0; n < ips; ++n) {
        const int ip = add(-1, "IP");
        for (int channel = 0; channel < SearchedIpChannels; ++channel)
            add(ip, "DCUCHANNEL");
        add(ip, "PLL");
    }
    return design;
}

// Places nothing; the sites lie on a square. Where there are too few of them, a plan for a part is to be found.
void searchPlaces(benchmark::State& state, const PlannedDevice& device, int supplies, int ips)
{
    const mirn::zelengine::Design design = unplacedDesign(supplies, ips);
    const auto expected
        = static_cast<std::size_t>(supplies > device.sites ? device.sites : supplies + ips * (SearchedIpChannels + 1));
    const auto side = static_cast<int>(std::sqrt(device.engine->device().sites().size()));
    int count = 0;
    const auto pointOf = [&](int) {
        ++count;
        return QPointF(count % side, count / side);
    };
    for (auto _ : state) {
        mirn::zelengine::PlacementAnswer answer;
        state.SetIterationTime(secondsOf([&] {
            const mirn::zelengine::PlacementSearch search(
                device.engine->device(), design, device.engine->settings(), pointOf);
            answer = search.run(search.unplaced(), {});
        }));
        if (answer.placements.size() != expected)
            state.SkipWithError("not everything was placed");
        state.counters["resources"] = static_cast<double>(answer.placements.size());
    }
}

// The cost of any such batch: Tcl reads and calls the commands, and each command goes to the operating system.
void runEmptyCommands(benchmark::State& state)
{
    QString script;
    for (int n = 0; n < Commands; ++n)
        script += QStringLiteral("keep -rsc {%1} -id %2\n").arg(DesignProject::supply(n), QString::number(n));
    for (auto _ : state) {
        QTemporaryFile file;
        TclInterpreter tcl;
        tcl.addCommand(QStringLiteral("keep"), [&file](const QStringList& words) {
            const QByteArray line = TclInterpreter::list(words).toUtf8() + '\n';
            return file.write(line) == line.size() && file.flush() ? TclResult::value() : TclResult::error({});
        });
        if (!file.open())
            state.SkipWithError("there is no place for a temporary file");
        TclResult result;
        state.SetIterationTime(secondsOf([&] { result = tcl.evaluate(script); }));
        if (!result.isOk)
            state.SkipWithError("a line was not written");
    }
}

// A session that starts from the state of the design file. Its changes stay in the journal after it ends.
class Session
{
public:
    explicit Session(const PlannedDevice& device)
        : m_engine(openEngine(device.project))
        , m_editor(*m_engine, device.project.path() + QStringLiteral("/impl"))
    {
        addDesignCommands(m_tcl, m_editor);
    }

    [[nodiscard]] double secondsOfScript(benchmark::State& state, const QString& script)
    {
        TclResult result;
        const double seconds = secondsOf([&] { result = m_tcl.evaluate(script); });
        if (!result.isOk)
            state.SkipWithError(qPrintable(result.text));
        return seconds;
    }

    [[nodiscard]] DesignEditor& editor() { return m_editor; }

private:
    const std::unique_ptr<ReferenceEngine> m_engine;
    DesignEditor m_editor;
    TclInterpreter m_tcl;
};

QString placeScript()
{
    QString script;
    for (int n = 0; n < Commands; ++n)
        script += QStringLiteral("zel_resource place -rsc {%1} -id %2\n")
                      .arg(DesignProject::supply(n), QString::number(DesignProject::supplySite(n)));
    return script;
}

QString resetScript()
{
    QString script;
    for (int n = 0; n < Commands; ++n)
        script += QStringLiteral("zel_resource reset -ip {%1}\n").arg(DesignProject::supply(n));
    return script;
}

// Places all resources and replays the journal of that, undoes everything, then places and resets all again.
void runBatch(benchmark::State& state, const PlannedDevice& device)
{
    const QString place = placeScript();
    double resetting = 0.0;
    double undoing = 0.0;
    double replaying = 0.0;
    for (auto _ : state) {
        {
            Session session(device);
            (void)session.editor().recover(changeCommand(session.editor())); // of what the run before has discarded
            state.SetIterationTime(session.secondsOfScript(state, place));
        }
        Session session(device);
        QStringList said;
        replaying += secondsOf([&] { said = session.editor().recover(changeCommand(session.editor())); });
        if (said.size() != 1)
            state.SkipWithError("the journal did not bring everything back");
        undoing += session.secondsOfScript(state, QStringLiteral("time undo %1").arg(Commands));
        (void)session.secondsOfScript(state, place);
        resetting += session.secondsOfScript(state, resetScript());
        if (!session.editor().discard().isEmpty())
            state.SkipWithError("the journal was not emptied");
    }
    const auto average = [](double seconds) { return benchmark::Counter(seconds, benchmark::Counter::kAvgIterations); };
    state.counters["reset"] = average(resetting);
    state.counters["undo"] = average(undoing);
    state.counters["replay"] = average(replaying);
}

} // namespace

void addDesignBenchmarks(int elements)
{
    if (elements > MostSites)
        return;
    const int sites = std::max(elements, Commands);
    add("QJsonDocument, merely parsing", elements,
        [=](benchmark::State& state) { parseJsonOnly(state, PlannedDevice::ofSize(sites)); });
    add("open a device", elements, [=](benchmark::State& state) { openDevice(state, PlannedDevice::ofSize(sites)); });
    addCounted("may it be dropped here", elements, DropQueries,
        [=](benchmark::State& state) { canDrop(state, PlannedDevice::ofSize(sites)); });
    add("probable sites of a supply", elements,
        [=](benchmark::State& state) { probableSites(state, PlannedDevice::ofSize(sites)); });
    add("probable sites of an IP", elements,
        [=](benchmark::State& state) { showProbableSites(state, PlannedDevice::ofSize(sites), DesignProject::ip()); });
    add("check of a design", elements,
        [=](benchmark::State& state) { checkDesign(state, PlannedDevice::ofSize(sites)); });
    add("places for 2,000 resources", elements, [=](benchmark::State& state) {
        searchPlaces(state, PlannedDevice::ofSize(sites), SearchedSupplies, SearchedIps);
    });
    add("places for 20,000 supplies", elements,
        [=](benchmark::State& state) { searchPlaces(state, PlannedDevice::ofSize(sites), ManySupplies, 0); });
    add("10,000 empty commands", elements, [](benchmark::State& state) { runEmptyCommands(state); });
    add("10,000 place commands", elements,
        [=](benchmark::State& state) { runBatch(state, PlannedDevice::ofSize(sites)); });
}

} // namespace zelbench
