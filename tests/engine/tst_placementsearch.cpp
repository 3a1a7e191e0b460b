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
    const Site& site = *given.device.site(placement.site);
    return PlacementRules(given.device, design).propose(placement.resource, placement.site).isAllowed()
        && given.settings.disablingSetting(site).isEmpty();
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
    void agreesWithTryingEverything_data()
    {
        const Rows<int> row;
        row("plain designs", static_cast<int>(RandomDesign::Sort::Plain));
        row("at most so many in a group", static_cast<int>(RandomDesign::Sort::GroupRules));
        row("units full of IPs", static_cast<int>(RandomDesign::Sort::PackedUnits));
        row("linked resources", static_cast<int>(RandomDesign::Sort::Links));
    }

    void agreesWithTryingEverything()
    {
        const auto [sort] = row<int>();
        int impossible = 0;
        for (unsigned int seed = 1; seed <= RandomDesigns; ++seed) {
            const RandomDesign given(seed, static_cast<RandomDesign::Sort>(sort));
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
            "what belongs together shares one unit or neighbouring ones");
        row("a clock that reaches one unit of two", {"idle/p@PLL_EDGE"}, {"trio"},
            "top/trio/a, top/trio/b, top/trio/c and top/trio/pll cannot be placed together: a source has to "
            "reach every unit that it serves");
        row("a reference that does not reach the channels", {"duo/ref@REF_R", "trio/a@U2_CH0", "trio/b@U2_CH1"},
            {"duo"},
            "top/duo/a cannot be placed: none of the 4 free sites for resources of type DCUCHANNEL takes it; for "
            "example, top/duo/ref on REF_R does not reach U0");
        row("sources that feed nothing", {}, {"idle"},
            "top/idle/p, top/idle/q and top/idle/r cannot be placed together: there are 2 sites left for 3 resources; "
            "a site inside a unit takes no source that feeds nothing");
        row("three voltages for two banks", {}, {"v33", "v18", "v12"},
            "top/v33, top/v18 and top/v12 cannot be placed together: all of type UVCCIO in one group have the same "
            "voltage");
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
        device.addKind({"supply", "Supply", {findType(device.types(), "UVCCIO")}, {}});
        Design design("top");
        for (int n = 0; n < 10; ++n)
            device.addSite({n, QString("V%1").arg(n), 0, QString("B%1").arg(n), {}, {}, {}, {}, {}});
        for (const char* const name : {"a", "b", "c"}) {
            Resource supply;
            supply.name = name;
            supply.type = findType(device.types(), "UVCCIO");
            supply.properties.insert("voltage", "1.8 V");
            design.add(-1, supply);
        }
        design.setSite(0, 6);
        const PlacementSearch search(
            device, design, SettingStore(device), [](int site) { return QPointF(site * site, 0.0); });
        QCOMPARE(sitesOf(search.run(search.unplaced(), {})), std::vector<int>({4, 5}));
    }

    // Units in a row, and IPs of so many channels each: what takes longer than a moment counts as not found.
    void packsUnits_data()
    {
        using Numbers = std::vector<int>;
        const Rows<Numbers, Numbers, bool, QString> row;
        row("three and one in units of four", Numbers(40, 4), repeated({3, 1}, 40), false, "placed");
        row("big ones last", Numbers(40, 5), repeated({2, 3}, 40), false, "placed");
        row("three in units of two side by side", Numbers(60, 2), Numbers(40, 3), true, "placed");
        row("three and one in units of two and four", repeated({2, 4}, 20), repeated({3, 1, 1, 1}, 20), true, "placed");
        row("no site to spare", Numbers(30, 9), cut(30, 9), false, "placed");
        row("no room for two in a unit", Numbers(10, 5), Numbers(11, 3), false, "impossible");
        row("more channels than sites", Numbers(10, 3), Numbers(11, 3), true, "impossible");
    }

    void packsUnits()
    {
        const auto [units, ips, areNeighbours, expected] = row<std::vector<int>, std::vector<int>, bool, QString>();
        const Packing packing(units, ips, areNeighbours);
        const PlacementSearch search(packing.device, packing.design, SettingStore(packing.device), {});
        const PlacementAnswer answer = search.run(search.unplaced(), {});
        QCOMPARE(answer.kind == Kind::Placed      ? "placed"
                : answer.kind == Kind::Impossible ? "impossible"
                                                  : "not found",
            expected);
    }

    // A rule that counts is part of the reason, and so is what it counts.
    void saysThatAGroupIsFull()
    {
        const Packing packing(std::vector<int>(12, 2), std::vector<int>(13, 1), false, 1);
        const PlacementSearch search(packing.device, packing.design, SettingStore(packing.device), {});
        const PlacementAnswer answer = search.run(search.unplaced(), {});
        QCOMPARE(answer.sentence,
            "top/0/0, top/1/0, top/2/0 and 10 more cannot be placed together: one group takes at most 1 of type "
            "DCUCHANNEL");
        QCOMPARE(answer.placements.size(), std::size_t(12));
    }

    // What holds up a search of which the proof would take ages: units of nine sites for IPs of four and three
    // channels, of which fewer than counting says fit together.
    void endsInTimeAndWhenCancelled()
    {
        std::vector<int> ips(15, 4);
        ips.resize(15 + 8, 3);
        const Packing packing(std::vector<int>(10, 9), ips, false);
        const PlacementSearch search(packing.device, packing.design, SettingStore(packing.device), {});
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

    static std::vector<int> repeated(const std::vector<int>& numbers, int times)
    {
        std::vector<int> result;
        for (int n = 0; n < times; ++n)
            result.insert(result.end(), numbers.begin(), numbers.end());
        return result;
    }

    // IPs of two channels and more that fill units of so many sites.
    static std::vector<int> cut(int units, int sites)
    {
        zeltest::Random random(1);
        std::vector<int> result;
        for (int left = 0, unit = 0; unit < units || left > 0; left -= result.back()) {
            if (left == 0) {
                left = sites;
                ++unit;
            }
            result.push_back(left < 4 ? left : std::min(left - 2, 2 + random.below(4)));
        }
        std::sort(result.begin(), result.end()); // the order that fits worst
        return result;
    }

    // Units with so many sites and IPs with so many channels; the units may be neighbours in a row.
    struct Packing
    {
        Packing(const std::vector<int>& units, const std::vector<int>& ips, bool areNeighbours, int most = 0)
        {
            const auto channel = std::make_shared<ResourceType>(*findType(standardTypes(), "DCUCHANNEL"));
            const auto ipType = std::make_shared<ResourceType>(*findType(standardTypes(), "IP"));
            channel->mostInGroup = most;
            ipType->parts = channel.get();
            device.setTypes({ipType, channel});
            device.addKind({"channel", "Channel", {channel.get()}, {}});
            for (std::size_t unit = 0; unit < units.size(); ++unit) {
                const QStringList neighbours(areNeighbours && unit > 0 ? 1 : 0, QString("U%1").arg(unit - 1));
                for (int n = 0; n < units[unit]; ++n) {
                    const int id = static_cast<int>(device.sites().size());
                    device.addSite(
                        {id, QString("C%1").arg(id), 0, QString("U%1").arg(unit), neighbours, {}, {}, {}, {}});
                }
            }
            for (std::size_t ip = 0; ip < ips.size(); ++ip) {
                const int parent = design.add(-1, resourceOf(static_cast<int>(ip), ipType.get()));
                for (int n = 0; n < ips[ip]; ++n)
                    design.add(parent, resourceOf(n, channel.get()));
            }
        }
        static Resource resourceOf(int number, const ResourceType* type)
        {
            Resource result;
            result.name = QString::number(number);
            result.type = type;
            return result;
        }
        Device device;
        Design design{"top"};
    };

    const ProjectFolder m_folder{DESIGN};
};

ZEL_TEST_MAIN(TestPlacementSearch)
#include "tst_placementsearch.moc"
