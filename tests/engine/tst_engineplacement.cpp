// SPDX-License-Identifier: MIT
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <list>

using mirn::zelengine::ReferenceEngine;

namespace {

// duo has its first channel and its clocks on the left; mono and quad are not placed.
const char* const DESIGN = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true},
    {"name": "pll", "type": "PLL"}]},
  {"name": "mono", "type": "IP", "children": [{"name": "a", "type": "DCUCHANNEL"}]},
  {"name": "quad", "type": "IP", "children": [{"name": "parts", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}, {"name": "c", "type": "DCUCHANNEL"}]},
    {"name": "ref", "type": "EXTREF"}]},
  {"name": "shared", "type": "PLL", "feeds": ["mono", "duo"]},
  {"name": "core", "type": "PLL"},
  {"name": "v33", "type": "UVCCIO", "voltage": "3.3 V", "site": "V0_1"},
  {"name": "v33b", "type": "UVCCIO", "voltage": "3.3 V"},
  {"name": "v18", "type": "UVCCIO", "voltage": "1.8 V"},
  {"name": "vfree", "type": "UVCCIO", "site": "V1_2"},
  {"name": "vany", "type": "UVCCIO"},
  {"name": "bare", "type": "IP"}
])";

int idOf(const ReferenceEngine& engine, const QString& site)
{
    const auto* found = engine.device().site(site);
    return found ? found->id : -1;
}

// The place of every resource as "path@SITE", in the order of the tree.
QStringList placements(const ReferenceEngine& engine)
{
    QStringList result;
    for (int index : engine.design().all()) {
        const auto& resource = engine.design().resource(index);
        if (const auto* site = engine.device().site(resource.site))
            result.append(resource.path.mid(4) + '@' + site->name);
    }
    return result;
}

} // namespace

class TestEnginePlacement : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        zeltest::Test::init();
        m_engine = openEngine(m_folder.path());
    }

    void removedResourcesComeBackWhereTheyStood()
    {
        const QStringList before = placements(*m_engine);
        QVERIFY(m_engine->remove("top/duo/a").isEmpty());
        QVERIFY(m_engine->remove("top/duo").isEmpty());
        QCOMPARE(m_engine->restore("top/duo/a"), "top/duo/a is part of top/duo, which is removed");
        QCOMPARE(m_engine->restore("top/mono"), "no resource \"top/mono\" was removed");
        QVERIFY(place("top/quad/ref", "REF_L").isEmpty());
        QCOMPARE(m_engine->restore("top/duo"), "top/duo/ref is fixed on REF_L, which is occupied by top/quad/ref");
        QVERIFY(m_engine->reset("top/quad/ref").isEmpty());
        QVERIFY(m_engine->restore("top/duo").isEmpty());
        QVERIFY(m_engine->restore("top/duo/a").isEmpty());
        QVERIFY(!m_engine->restore("top/duo/a").isEmpty());
        QVERIFY(placements(*m_engine).contains("duo/ref@REF_L")); // is fixed there
        QVERIFY(!placements(*m_engine).contains("duo/a@U0_CH0"));
        QVERIFY(place("top/duo/a", "U0_CH0").isEmpty());
        QCOMPARE(placements(*m_engine), before);
    }

    void placesOrSaysWhyNot_data()
    {
        const Rows<QString, QString, QString> row;
        row("a free channel of the same unit", "top/duo/b", "U0_CH1", "");
        row("a channel of the unit next to it", "top/duo/b", "U1_CH1", "");
        row("a channel of a unit apart", "top/duo/b", "U2_CH0", "top/duo/a is in U0, which is not next to U2");
        row("an occupied channel", "top/mono/a", "U0_CH0", "U0_CH0 is occupied by top/duo/a");
        row("the site it is on", "top/duo/a", "U0_CH0", "top/duo/a is already on U0_CH0");
        row("a channel beyond the reach of its clock", "top/duo/a", "U2_CH0", "top/duo/ref on REF_L does not reach U2");
        row("a site of another kind", "top/duo/b", "P1", "P1 (Pad) does not take resources of type DCUCHANNEL");
        row("what is fixed", "top/duo/ref", "REF_R", "top/duo/ref is fixed on REF_L");
        row("a folder", "top/quad/parts", "U2", "top/quad/parts only groups others and cannot be placed itself");
        row("no such resource", "top/nothing", "U2", "there is no resource \"top/nothing\"");
        row("no such site", "top/core", "nowhere", "there is no site -1");
        row("a transmit PLL in its unit", "top/duo/pll", "U0_PLL", "");
        row("a PLL that reaches the unit", "top/duo/pll", "PLL_EDGE", "");
        row("a PLL that reaches no unit", "top/duo/pll", "PLL_CORE",
            "PLL_CORE reaches no unit, but top/duo/pll feeds top/duo");
        row("a shared PLL where it reaches all it feeds", "top/shared", "PLL_EDGE", "");
        row("an idle PLL in a unit", "top/core", "U0_PLL", "U0_PLL serves only U0, where top/core feeds nothing");
        row("an idle PLL elsewhere", "top/core", "PLL_EDGE", "");
        row("a supply of the voltage of its bank", "top/v33b", "V0_2", "");
        row("a supply of another voltage", "top/v18", "V0_2", "top/v18 needs 1.8 V, but top/v33 gives 3.3 V to BANK0");
        row("a supply beside one that takes any voltage", "top/v18", "V1_1", "");
        row("a supply that takes any voltage", "top/vany", "V0_2", "");
        row("a supply that moves within its bank", "top/v33", "V0_2", "");
    }

    void placesOrSaysWhyNot()
    {
        const auto [resource, site, refusal] = row<QString, QString, QString>();
        const int id = idOf(*m_engine, site);
        const QStringList before = placements(*m_engine);
        const std::string name = resource.toStdString();
        const std::string idText = std::to_string(id);
        QCOMPARE(m_engine->canDrop(&name, &idText), refusal.isEmpty());
        QCOMPARE(QString::fromStdString(m_engine->refusalReason(&name, &idText)), refusal);
        QCOMPARE(m_engine->place(resource, id), refusal);
        if (refusal.isEmpty())
            QVERIFY(placements(*m_engine).contains(resource.mid(4) + '@' + site));
        else
            QCOMPARE(placements(*m_engine), before);
    }

    // A device that has nothing of the standard ones: what is placed stands in the design, and the row asks for more.
    void placesByTheRulesOfTheFiles_data()
    {
        const Rows<QString, QString, QString> row;
        row("a full group", "ram1", "R2", "G1 takes at most 1 of type RAM, and top/ram0 is there");
        row("the group of another one", "ram1", "R3", "");
        row("pads that agree", "padb", "P2", "");
        row("pads that do not", "padc", "P2", "top/padc needs LVDS, but top/pada gives CMOS to G1");
        row("a link to a unit apart", "ram2", "R4", "top/pada is in G1, which is not next to G3");
        row("a link to the next unit", "ram2", "R3", "");
        row("a link out of reach", "padd", "P3", "top/clk on C1 does not reach G2");
        row("a stack in one unit", "stack", "G2", "");
        row("a stack without room", "stack", "G3", "top/stack has 2 parts to place, but 1 site is free in G3");
        row("a stack that is linked elsewhere", "far", "G3", "top/pada is in G1, which is not next to G3");
    }

    void placesByTheRulesOfTheFiles()
    {
        const auto [resource, site, refusal] = row<QString, QString, QString>();
        ProjectFolder folder;
        folder.write("device.json", zeltest::dataFile("engine/rules/device.json"));
        folder.write("design.json", zeltest::dataFile("engine/rules/design.json"));
        const auto engine = openEngine(folder.path());
        QCOMPARE(engine->place("top/" + resource, idOf(*engine, site)), refusal);
    }

    // Highlight, drop query and command answer alike, for every resource and every site.
    void proposesExactlyTheSitesThatAccept()
    {
        const auto start = m_engine->design();
        const std::string anywhere = "10";
        for (int index : start.all()) {
            const std::string name = start.resource(index).path.toStdString();
            std::list<std::string> proposed;
            m_engine->showProbPlaceItem(&name, &anywhere, proposed);
            QVERIFY(proposed.empty() || m_engine->refusalToPlace(&name).empty());
            const std::vector<int> ofKind = m_engine->sitesOfKind(&name);
            for (const auto& site : m_engine->device().sites()) {
                const std::string id = std::to_string(site.id);
                const bool isProposed = std::find(proposed.begin(), proposed.end(), id) != proposed.end();
                QVERIFY(!isProposed || std::find(ofKind.begin(), ofKind.end(), site.id) != ofKind.end());
                QCOMPARE(m_engine->canDrop(&name, &id), isProposed);
                QCOMPARE(m_engine->place(start.resource(index).path, site.id).isEmpty(), isProposed);
                m_engine->setDesign(start);
            }
        }
    }

    void fillsUnitsInOrder_data()
    {
        const Rows<QString, QString, QString, QString> row;
        row("one channel", "top/mono", "U1", "mono/a@U1_CH0", "");
        row("the free channel of a unit in use", "top/mono", "U0", "mono/a@U0_CH1", "");
        row("one too many spills over", "top/quad", "U1", "quad/parts/a@U1_CH0 quad/parts/b@U1_CH1 quad/parts/c@U0_CH1",
            "");
        row("nowhere to spill over to", "top/quad", "U2", "",
            "top/quad has 3 parts to place, but 2 sites are free in U2");
        row("moves what is placed", "top/duo", "U1", "duo/a@U1_CH0 duo/b@U1_CH1", "");
        row("against its clock", "top/duo", "U2", "duo/a@U0_CH0", "top/duo/ref on REF_L does not reach U2");
        row("nothing to move", "top/bare", "U1", "", "top/bare has no part that could be moved");
        row("a unit without channels", "top/mono", "U3", "", "U3 has no sites for parts");
        row("onto a channel of it", "top/mono", "U1_CH0", "", "U1_CH0 (Channel) does not take resources of type IP");
    }

    void fillsUnitsInOrder()
    {
        const auto [ip, unit, channels, refusal] = row<QString, QString, QString, QString>();
        QCOMPARE(place(ip, unit), refusal);
        QCOMPARE(placements(*m_engine).filter(ip.mid(4) + '/').filter("_CH").join(' '), channels);
        if (refusal.isEmpty())
            QCOMPARE(place(ip, unit), ip + " is already on " + unit);
    }

    // The sites of the IP's own channels count as free, and two channels may change places.
    void movesWithinItsOwnSites()
    {
        QCOMPARE(place("top/duo/a", "U0_CH1"), QString());
        QCOMPARE(place("top/duo/b", "U0_CH0"), QString());
        QCOMPARE(place("top/duo", "U0"), QString());
        const QStringList expected{"duo/a@U0_CH0", "duo/b@U0_CH1"};
        QCOMPARE(placements(*m_engine).filter("_CH"), expected);
        QCOMPARE(m_engine->design().occupants().size(), 5); // with the reference and v33
        QCOMPARE(place("top/duo", "U0"), "top/duo is already on U0");
        QCOMPARE(place("top/mono", "U0"), "U0 has no free site for parts of top/mono");
        QCOMPARE(place("top/quad", "U1"), "top/quad has 3 parts to place, but 2 sites are free in U1 and U0");
        QCOMPARE(place("top/mono/a", "U2_CH0"), QString());
        QCOMPARE(place("top/quad", "U2"), "top/quad has 3 parts to place, but 1 site is free in U2");
    }

    void swapsWhatTheRulesAllow_data()
    {
        const Rows<QString, QString, QString> row;
        row("channels of two IPs, in either's reach", "top/duo/a", "top/mono/a", "");
        row("the supplies of a bank", "top/v33", "top/v33b", "");
        row("what would go out of its clock's reach", "top/duo/a", "top/quad/parts/a",
            "top/duo/ref on REF_L does not reach U2");
        row("sites of two kinds", "top/duo/a", "top/v33", "V0_1 (Supply) does not take resources of type DCUCHANNEL");
        row("a supply of another bank's voltage", "top/v33", "top/v18",
            "top/v18 needs 1.8 V, but top/v33b gives 3.3 V to BANK0");
        row("what is fixed", "top/duo/a", "top/duo/ref", "top/duo/ref is fixed on REF_L");
        row("what is not placed", "top/duo/a", "top/core", "top/core is not placed");
        row("a resource with itself", "top/duo/a", "top/duo/a", "top/duo/a cannot swap with itself");
        row("what is not there", "top/duo/a", "top/x", "there is no resource \"top/x\"");
    }

    void swapsWhatTheRulesAllow()
    {
        const auto [resource, other, refusal] = row<QString, QString, QString>();
        QCOMPARE(place("top/mono/a", "U1_CH0"), QString());
        QCOMPARE(place("top/quad/parts/a", "U2_CH0"), QString());
        QCOMPARE(place("top/v33b", "V0_2"), QString());
        QCOMPARE(place("top/v18", "V1_1"), QString());
        const std::string name = resource.toStdString();
        const std::string with = other.toStdString();
        std::string reason;
        QCOMPARE(m_engine->maySwap(&name, &with, &reason), refusal.isEmpty());
        QCOMPARE(reason, refusal.toStdString());
    }

    void resets_data()
    {
        const Rows<QString, QString> row;
        row("what is placed", "top/v33", "");
        row("an IP with a fixed part", "top/duo", "");
        row("what is not placed", "top/v18", "top/v18 is not placed");
        row("what is fixed", "top/duo/ref", "top/duo/ref is fixed on REF_L");
        row("what is not there", "top/x", "there is no resource \"top/x\"");
    }

    void resets()
    {
        const auto [resource, refusal] = row<QString, QString>();
        QCOMPARE(m_engine->reset(resource), refusal);
        if (!refusal.isEmpty())
            return;
        const QStringList left = placements(*m_engine).filter(resource.mid(4));
        QVERIFY(left.isEmpty() || left == QStringList{"duo/ref@REF_L"});
        QCOMPARE(m_engine->reset(resource).isEmpty(), false);
    }

    void locksWhatIsPlaced_data()
    {
        const Rows<QString, QString, QString> row;
        row("a supply", "top/v33", "", "top/v33 is locked on V0_1");
        row("an IP but for its fixed part", "top/duo", "", "top/duo/a is locked on U0_CH0");
        row("what is fixed", "top/duo/ref", "top/duo/ref is fixed on REF_L already", "");
        row("nothing placed", "top/quad", "top/quad is not placed, and only what is placed can be locked", "");
        row("what is not there", "top/x", "there is no resource \"top/x\"", "");
    }

    void locksWhatIsPlaced()
    {
        const auto [resource, refusal, held] = row<QString, QString, QString>();
        QCOMPARE(lock(resource), refusal);
        if (!refusal.isEmpty())
            return;
        const QStringList before = placements(*m_engine);
        QCOMPARE(lock(resource), held + " already");
        QCOMPARE(place(held.section(' ', 0, 0), "V0_2"), held + "; unlock it first");
        QCOMPARE(m_engine->reset(resource), held + "; unlock it first");
        QCOMPARE(placements(*m_engine), before);
        m_engine->setLocked(m_engine->proposeUnlock(resource).resources, false);
        QVERIFY(!m_engine->proposeUnlock(resource).isAllowed());
        QCOMPARE(m_engine->reset(resource), QString());
    }

    // Like one that is fixed, but a removal takes the lock off.
    void lockedChannelStaysWhenItsIpMoves()
    {
        QCOMPARE(lock("top/duo/a"), QString());
        QCOMPARE(place("top/duo", "U2"), "top/duo/ref on REF_L does not reach U2");
        QCOMPARE(place("top/duo", "U1"), QString());
        QCOMPARE(placements(*m_engine).filter("_CH"), (QStringList{"duo/a@U0_CH0", "duo/b@U1_CH0"}));
        QCOMPARE(lock("top/duo"), QString());
        QCOMPARE(place("top/duo", "U0"), "top/duo/b is locked on U1_CH0; unlock it first");
        QVERIFY(m_engine->remove("top/duo").isEmpty() && m_engine->restore("top/duo").isEmpty());
        QCOMPARE(m_engine->proposeUnlock("top/duo").refusal, "top/duo is not locked");
        QCOMPARE(place("top/duo", "U0"), QString());
    }

    // A removed IP frees its sites and no longer constrains the clock that fed it.
    void removesWithAllReferences()
    {
        QVERIFY(!place("top/shared", "PLL_CORE").isEmpty());
        QCOMPARE(m_engine->remove("top/duo"), QString());
        QCOMPARE(m_engine->remove("top/mono"), QString());
        QCOMPARE(m_engine->design().find("top/duo/a"), -1);
        QCOMPARE(placements(*m_engine), (QStringList{"v33@V0_1", "vfree@V1_2"}));
        for (const char* site : {"U0_PLL", "PLL_CORE"})
            QCOMPARE(place("top/shared", site), QString());
        QCOMPARE(m_engine->restore("top/mono"), "PLL_CORE reaches no unit, but top/shared feeds top/mono");
        QCOMPARE(m_engine->tree()->children->size(), std::size_t(9));
        QVERIFY(!m_engine->remove("top/duo").isEmpty());
    }

    // The place of a fixed part may have become wrong in the meantime.
    void whatWouldBreakARuleDoesNotComeBack()
    {
        const ProjectFolder folder(R"([
      {"name": "ip", "type": "IP", "children": [
        {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0", "fixed": true}]},
      {"name": "clock", "type": "EXTREF", "feeds": ["ip"], "site": "REF_L"}])");
        m_engine = openEngine(folder.path());
        QCOMPARE(m_engine->remove("top/ip"), QString());
        QCOMPARE(place("top/clock", "REF_R"), QString());
        QCOMPARE(m_engine->restore("top/ip"), "top/clock on REF_R does not reach U0");
        QCOMPARE(placements(*m_engine), QStringList{"clock@REF_R"});
        QCOMPARE(place("top/clock", "REF_L"), QString());
        QCOMPARE(m_engine->restore("top/ip"), QString());
        QCOMPARE(placements(*m_engine), (QStringList{"ip/a@U0_CH0", "clock@REF_L"}));
    }

    // The device file may name it on one side only.
    void neighboursAreSoBothWays()
    {
        ProjectFolder folder(DESIGN);
        folder.write("device.json", smallDevice().replace(R"(, "neighbours": ["U0"])", ""));
        for (const auto& [a, b] : {std::pair("U0_CH1", "U1_CH0"), std::pair("U1_CH0", "U0_CH1")}) {
            m_engine = openEngine(folder.path());
            QCOMPARE(place("top/duo/a", a), QString());
            QCOMPARE(place("top/duo/b", b), QString());
        }
    }

private:
    QString lock(const QString& resource)
    {
        const auto proposal = m_engine->proposeLock(resource);
        m_engine->setLocked(proposal.resources, true);
        return proposal.refusal.sentence();
    }

    QString place(const QString& resource, const QString& site)
    {
        return m_engine->place(resource, idOf(*m_engine, site)).sentence();
    }

    const ProjectFolder m_folder{DESIGN};
    std::unique_ptr<ReferenceEngine> m_engine;
};

ZEL_TEST_MAIN(TestEnginePlacement)
#include "tst_engineplacement.moc"
