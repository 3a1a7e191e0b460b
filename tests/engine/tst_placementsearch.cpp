// SPDX-License-Identifier: MIT
#include "engine/search/placementsearch.h"
#include "tests/engine/designstate.h"
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/engine/randomdesign.h"
#include "tests/support/testmain.h"

#include <algorithm>
#include <chrono>
#include <cmath>

using namespace mirn::zelengine;
using Kind = PlacementAnswer::Kind;

namespace {

constexpr int RandomDesigns = 2000;

const char* const DESIGN = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}, {"name": "ref", "type": "EXTREF"}]},
  {"name": "trio", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}, {"name": "c", "type": "DCUCHANNEL"},
    {"name": "pll", "type": "PLL"}]},
  {"name": "idle", "children": [{"name": "p", "type": "PLL"}, {"name": "q", "type": "PLL"}, {"name": "r", "type": "PLL"}]},
  {"name": "v33", "type": "UVCCIO", "voltage": "3.3 V"},
  {"name": "v18", "type": "UVCCIO", "voltage": "1.8 V"},
  {"name": "v12", "type": "UVCCIO", "voltage": "1.2 V"}
])";

// Whether the rules and settings allow this, asked one by one.
bool isAllowed(const RandomDesign& given, const Design& design, const Placement& placement)
{
    return PlacementRules(given.device, design).propose(placement.resource, placement.site).isAllowed()
        && given.settings.disablingSetting(*given.device.site(placement.site)).isEmpty();
}

// Tries everything.
bool hasPlacement(const RandomDesign& given, Design& design, const std::vector<int>& resources, std::size_t first = 0)
{
    if (first == resources.size())
        return true;
    bool isFound = false;
    for (const Site& site : given.device.sites()) {
        if (isFound || !isAllowed(given, design, {resources[first], site.id}))
            continue;
        design.setSite(resources[first], site.id);
        isFound = hasPlacement(given, design, resources, first + 1);
        design.setSite(resources[first], -1);
    }
    return isFound;
}

bool hasPlacement(const RandomDesign& given, const std::vector<int>& resources)
{
    Design design = given.design;
    return hasPlacement(given, design, resources);
}

std::vector<int> without(std::vector<int> list, int value)
{
    list.erase(std::remove(list.begin(), list.end(), value), list.end());
    return list;
}

} // namespace

class TestPlacementSearch : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // The answer, the plan and the conflict of random designs, against trying everything.
    void agreesWithTryingEverything()
    {
        int impossible = 0;
        for (unsigned int seed = 1; seed <= RandomDesigns; ++seed) {
            const RandomDesign given(seed);
            const PlacementSearch search(
                given.device, given.design, given.settings, [](int site) { return QPointF(site * 7 % 5, site % 3); });
            const std::vector<int> wanted = search.unplaced();
            const PlacementAnswer answer = search.run(wanted, {});
            const QByteArray name = "seed " + QByteArray::number(seed);
            QVERIFY2(answer.kind == (hasPlacement(given, wanted) ? Kind::Placed : Kind::Impossible), name);
            QVERIFY2(answer.placements.size() + answer.missing.size() == wanted.size(), name);
            Design design = given.design;
            for (const Placement& placement : answer.placements) {
                QVERIFY2(isAllowed(given, design, placement), name);
                design.setSite(placement.resource, placement.site);
            }
            if (answer.kind == Kind::Placed) {
                QVERIFY2(answer.missing.empty() && answer.conflict.empty() && answer.sentence.isEmpty(), name);
                continue;
            }
            ++impossible;
            QVERIFY2(!answer.missing.empty() && !hasPlacement(given, answer.conflict), name);
            for (int resource : answer.conflict) // each of them is part of the reason
                QVERIFY2(hasPlacement(given, without(answer.conflict, resource)), name);
        }
        QVERIFY(impossible > RandomDesigns / 5 && impossible < RandomDesigns * 4 / 5);
    }

    // A wanted resource stands for all that is below it.
    void saysWhatIsImpossible_data()
    {
        const Rows<QStringList, QStringList, QString> row;
        row("enough room", {}, {"duo", "idle/p", "v33", "v18"}, "");
        row("channels that need units side by side", {"duo/a@U0_CH1", "duo/b@U1_CH0", "trio/a@U0_CH0"}, {"trio"},
            "top/trio/b and top/trio/c cannot be placed together: there is 1 site left for 2 resources; "
            "the channels of one IP share one unit or neighbouring ones");
        row("a clock that reaches one unit of two", {"idle/p@PLL_EDGE"}, {"trio"},
            "top/trio/a, top/trio/b, top/trio/c and top/trio/pll cannot be placed together: a clock source has to "
            "reach every unit that it serves");
        row("a reference that does not reach the channels", {"duo/ref@REF_R", "trio/a@U2_CH0", "trio/b@U2_CH1"},
            {"duo"},
            "top/duo/a cannot be placed: none of the 4 free sites for resources of type DCUCHANNEL takes it; for "
            "example, top/duo/ref on REF_R does not reach U0");
        row("sources that feed nothing", {}, {"idle"},
            "top/idle/p, top/idle/q and top/idle/r cannot be placed together: there are 2 sites left for 3 resources; "
            "a clock site inside a unit takes no source that feeds nothing");
        row("three voltages for two banks", {}, {"v33", "v18", "v12"},
            "top/v33, top/v18 and top/v12 cannot be placed together: the supplies of one bank have one voltage");
        row("banks of other voltages", {"v33@V0_1", "v18@V1_1"}, {"v12"},
            "top/v12 cannot be placed: none of the 2 free sites for resources of type UVCCIO takes it; for example, "
            "top/v12 needs 1.2 V, but top/v33 gives 3.3 V to BANK0");
        row("a site out of use",
            {"U0 CH0=OFF", "U0 CH1=OFF", "trio/a@U0_CH1", "trio/b@U1_CH0", "trio/c@U1_CH1", "duo/ref@REF_L"}, {"duo"},
            "top/duo/a cannot be placed: none of the 3 free sites for resources of type DCUCHANNEL takes it; for "
            "example, U0_CH0 is out of use because CH0 is OFF");
    }

    void saysWhatIsImpossible()
    {
        const auto [state, wanted, expected] = row<QStringList, QStringList, QString>();
        const auto engine = openEngine(m_folder.path());
        enterState(*engine, state);
        std::vector<int> tops;
        for (const QString& each : wanted)
            tops.push_back(engine->design().find("top/" + each));
        const PlacementSearch search(engine->device(), engine->design(), engine->settings(), {});
        const PlacementAnswer answer = search.run(search.unplacedBelow(tops), {});
        QCOMPARE(answer.sentence, expected);
        QCOMPARE(answer.kind == Kind::Placed, expected.isEmpty());
    }

    // Three supplies of one voltage; one is placed, and the sites come nearer to each other towards the first.
    void placesNearPartners()
    {
        Device device;
        device.addKind({"supply", "Supply", {ResourceType::Uvccio}, {}});
        Design design("top");
        for (int n = 0; n < 10; ++n)
            device.addSite({n, QString("V%1").arg(n), 0, QString("B%1").arg(n), {}, {}, {}, {}, {}});
        for (const char* const name : {"a", "b", "c"}) {
            const Resource supply{name, {}, ResourceType::Uvccio, -1, {}, -1, false, false, "1.8 V", {}, {}};
            design.add(-1, supply);
        }
        design.setSite(0, 6);
        const PlacementSearch search(
            device, design, SettingStore(device), [](int site) { return QPointF(site * site, 0.0); });
        QCOMPARE(sitesOf(search.run(search.unplaced(), {})), std::vector<int>({4, 5}));
    }

    // What holds up a search of which the proof would take ages: one more IP than the units can take, of three channels
    // where a unit has five.
    void endsInTimeAndWhenCancelled()
    {
        const PlacementSearch search(m_packing.device, m_packing.design, SettingStore(m_packing.device), {});
        PlacementSearch::Limits limits;
        limits.time = std::chrono::milliseconds(300);
        int reports = 0;
        limits.progress = [&reports](int, int) { ++reports; };
        const PlacementAnswer partial = search.run(search.unplaced(), limits);
        QVERIFY(partial.kind == Kind::NotFound);
        QVERIFY(partial.placements.size() > search.unplaced().size() / 2 && reports > 1);
        QCOMPARE(partial.sentence, "no placement was found in 0.3 s, and none was proven impossible");
        int calls = 0;
        limits.time = std::chrono::hours(1);
        limits.isCancelled = [&calls] { return ++calls > 100; };
        const PlacementAnswer cancelled = search.run(search.unplaced(), limits);
        QVERIFY(cancelled.kind == Kind::Cancelled);
        QVERIFY(cancelled.placements.empty());
    }

private:
    static std::vector<int> sitesOf(const PlacementAnswer& answer)
    {
        std::vector<int> sites;
        for (const Placement& placement : answer.placements)
            sites.push_back(placement.site);
        std::sort(sites.begin(), sites.end());
        return sites;
    }

    struct Packing
    {
        Packing()
        {
            device.addKind({"channel", "Channel", {ResourceType::DcuChannel}, {}});
            for (int n = 0; n < 10 * 5; ++n)
                device.addSite({n, QString("C%1").arg(n), 0, QString("U%1").arg(n / 5), {}, {}, {}, {}, {}});
            for (int n = 0; n < 11 * 4; ++n) {
                const bool isIp = n % 4 == 0;
                design.add(isIp ? -1 : n - n % 4,
                    {QString::number(n), {}, isIp ? ResourceType::Ip : ResourceType::DcuChannel, -1, {}, -1, false,
                        false, {}, {}, {}});
            }
        }
        Device device;
        Design design{"top"};
    };

    const ProjectFolder m_folder{DESIGN};
    const Packing m_packing;
};

ZEL_TEST_MAIN(TestPlacementSearch)
#include "tst_placementsearch.moc"
