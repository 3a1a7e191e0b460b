// SPDX-License-Identifier: MIT
#include "engine/referenceengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QTest>

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
  {"name": "vany", "type": "UVCCIO"}
])";

std::unique_ptr<ReferenceEngine> openWith(ProjectFolder& folder, const QByteArray& resources)
{
    folder.write(QStringLiteral("design.json"), designWith(resources));
    QString error;
    QStringList warnings;
    auto engine = ReferenceEngine::open(folder.path(), &error, &warnings);
    if (!engine)
        qFatal("%s", qPrintable(error));
    return engine;
}

int idOf(const ReferenceEngine& engine, const QString& site)
{
    const auto* found = engine.device().site(site);
    return found ? found->id : -1;
}

// Where everything is: "path@SITE", in the order of the tree.
QStringList placements(const ReferenceEngine& engine)
{
    QStringList result;
    for (int index : engine.design().all()) {
        const auto& resource = engine.design().resource(index);
        if (const auto* site = engine.device().site(resource.site))
            result.append(resource.path.mid(4) + QLatin1Char('@') + site->name);
    }
    return result;
}

} // namespace

class TestEnginePlacement : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void removedResourcesComeBackWhereTheyStood();
    void init();
    void placesOrSaysWhyNot_data();
    void placesOrSaysWhyNot();
    void proposesExactlyTheSitesThatAccept();
    void fillsUnitsInOrder_data();
    void fillsUnitsInOrder();
    void movesWithinItsOwnSites();
    void resets_data();
    void resets();
    void removesWithAllReferences();
    void goesBackToAnEarlierState();
    void whatWouldBreakARuleDoesNotComeBack();
    void neighboursAreSoBothWays();

private:
    ProjectFolder m_folder;
    std::unique_ptr<ReferenceEngine> m_engine;
};

void TestEnginePlacement::init()
{
    zeltest::Test::init();
    m_engine = openWith(m_folder, DESIGN);
}

void TestEnginePlacement::placesOrSaysWhyNot_data()
{
    QTest::addColumn<QString>("resource");
    QTest::addColumn<QString>("site");
    QTest::addColumn<QString>("refusal");
    const auto row = [](const char* name, const char* resource, const char* site, const char* refusal) {
        QTest::newRow(name) << resource << site << refusal;
    };
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
        "PLL_CORE reaches no SerDes unit, but top/duo/pll feeds top/duo");
    row("a shared PLL where it reaches all it feeds", "top/shared", "PLL_EDGE", "");
    row("a PLL that feeds nothing in a unit", "top/core", "U0_PLL",
        "U0_PLL serves only U0, where top/core feeds nothing");
    row("a PLL that feeds nothing anywhere else", "top/core", "PLL_EDGE", "");
    row("a supply of the voltage of its bank", "top/v33b", "V0_2", "");
    row("a supply of another voltage", "top/v18", "V0_2", "top/v18 needs 1.8 V, but top/v33 gives 3.3 V to BANK0");
    row("a supply beside one that takes any voltage", "top/v18", "V1_1", "");
    row("a supply that takes any voltage", "top/vany", "V0_2", "");
    row("a supply that moves within its bank", "top/v33", "V0_2", "");
}

void TestEnginePlacement::placesOrSaysWhyNot()
{
    QFETCH(QString, resource);
    QFETCH(QString, site);
    QFETCH(QString, refusal);
    const int id = idOf(*m_engine, site);
    const QStringList before = placements(*m_engine);
    const std::string name = resource.toStdString();
    const std::string idText = std::to_string(id);
    QCOMPARE(m_engine->canDrop(&name, &idText), refusal.isEmpty());
    QCOMPARE(m_engine->place(resource, id), refusal);
    if (refusal.isEmpty())
        QVERIFY(placements(*m_engine).contains(resource.mid(4) + QLatin1Char('@') + site));
    else
        QCOMPARE(placements(*m_engine), before);
}

// Highlight, drop query and command answer alike, for every resource and every site.
void TestEnginePlacement::proposesExactlyTheSitesThatAccept()
{
    const auto start = m_engine->design();
    const std::string anywhere = "10";
    for (int index : start.all()) {
        const std::string name = start.resource(index).path.toStdString();
        std::list<std::string> proposed;
        m_engine->showProbPlaceItem(&name, &anywhere, proposed);
        for (const auto& site : m_engine->device().sites()) {
            const std::string id = std::to_string(site.id);
            const bool isProposed = std::find(proposed.begin(), proposed.end(), id) != proposed.end();
            QCOMPARE(m_engine->canDrop(&name, &id), isProposed);
            QCOMPARE(m_engine->place(start.resource(index).path, site.id).isEmpty(), isProposed);
            m_engine->setDesign(start);
        }
    }
}

void TestEnginePlacement::fillsUnitsInOrder_data()
{
    QTest::addColumn<QString>("ip");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<QStringList>("channels");
    QTest::newRow("one channel") << "top/mono"
                                 << "U1"
                                 << "" << QStringList{"mono/a@U1_CH0"};
    QTest::newRow("the free channel of a unit in use") << "top/mono"
                                                       << "U0"
                                                       << "" << QStringList{"mono/a@U0_CH1"};
    QTest::newRow("one more than fits spills over")
        << "top/quad"
        << "U1"
        << "" << QStringList{"quad/parts/a@U1_CH0", "quad/parts/b@U1_CH1", "quad/parts/c@U0_CH1"};
    QTest::newRow("nowhere to spill over to")
        << "top/quad"
        << "U2"
        << "top/quad has 3 channels to place, but 2 are free in U2" << QStringList();
    QTest::newRow("moves what is placed") << "top/duo"
                                          << "U1"
                                          << "" << QStringList{"duo/a@U1_CH0", "duo/b@U1_CH1"};
    QTest::newRow("against its clock") << "top/duo"
                                       << "U2"
                                       << "top/duo/ref on REF_L does not reach U2" << QStringList();
    QTest::newRow("onto one of its channels") << "top/mono"
                                              << "U1_CH0"
                                              << "U1_CH0 (Channel) does not take resources of type IP" << QStringList();
}

void TestEnginePlacement::fillsUnitsInOrder()
{
    QFETCH(QString, ip);
    QFETCH(QString, unit);
    QFETCH(QString, refusal);
    QFETCH(QStringList, channels);
    QCOMPARE(m_engine->place(ip, idOf(*m_engine, unit)), refusal);
    const QStringList found = placements(*m_engine).filter(ip.mid(4) + QLatin1Char('/')).filter(QStringLiteral("_CH"));
    if (refusal.isEmpty())
        QCOMPARE(found, channels);
}

// The sites of the IP's own channels count as free, and two channels may change places.
void TestEnginePlacement::movesWithinItsOwnSites()
{
    QCOMPARE(m_engine->place(QStringLiteral("top/duo/a"), idOf(*m_engine, QStringLiteral("U0_CH1"))), QString());
    QCOMPARE(m_engine->place(QStringLiteral("top/duo/b"), idOf(*m_engine, QStringLiteral("U0_CH0"))), QString());
    QCOMPARE(m_engine->place(QStringLiteral("top/duo"), idOf(*m_engine, QStringLiteral("U0"))), QString());
    const QStringList expected{"duo/a@U0_CH0", "duo/b@U0_CH1"};
    QCOMPARE(placements(*m_engine).filter(QStringLiteral("_CH")), expected);
    QCOMPARE(m_engine->design().occupants().size(), 5); // with the reference and v33
    QCOMPARE(m_engine->place(QStringLiteral("top/duo"), idOf(*m_engine, QStringLiteral("U0"))),
        QStringLiteral("top/duo is already on U0"));
}

void TestEnginePlacement::resets_data()
{
    QTest::addColumn<QString>("resource");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("what is placed") << "top/v33"
                                    << "";
    QTest::newRow("an IP with a fixed part") << "top/duo"
                                             << "";
    QTest::newRow("what is not placed") << "top/v18"
                                        << "top/v18 is not placed";
    QTest::newRow("what is fixed") << "top/duo/ref"
                                   << "top/duo/ref is fixed on REF_L";
    QTest::newRow("what is not there") << "top/x"
                                       << "there is no resource \"top/x\"";
}

void TestEnginePlacement::resets()
{
    QFETCH(QString, resource);
    QFETCH(QString, refusal);
    QCOMPARE(m_engine->reset(resource), refusal);
    if (!refusal.isEmpty())
        return;
    const QStringList left = placements(*m_engine).filter(resource.mid(4));
    QVERIFY(left.isEmpty() || left == QStringList{"duo/ref@REF_L"});
    QCOMPARE(m_engine->reset(resource).isEmpty(), false);
}

// A removed IP frees its sites and no longer constrains the clock that fed it.
void TestEnginePlacement::removesWithAllReferences()
{
    QVERIFY(!m_engine->place(QStringLiteral("top/shared"), idOf(*m_engine, QStringLiteral("PLL_CORE"))).isEmpty());
    QCOMPARE(m_engine->remove(QStringLiteral("top/duo")), QString());
    QCOMPARE(m_engine->remove(QStringLiteral("top/mono")), QString());
    QCOMPARE(m_engine->design().find(QStringLiteral("top/duo/a")), -1);
    QCOMPARE(placements(*m_engine), (QStringList{"v33@V0_1", "vfree@V1_2"}));
    for (const char* site : {"U0_PLL", "PLL_CORE"})
        QCOMPARE(m_engine->place(QStringLiteral("top/shared"), idOf(*m_engine, QLatin1String(site))), QString());
    QCOMPARE(m_engine->restore(QStringLiteral("top/mono")),
        QStringLiteral("PLL_CORE reaches no SerDes unit, but top/shared feeds top/mono"));
    QCOMPARE(m_engine->tree()->children->size(), std::size_t(8));
    QVERIFY(!m_engine->remove(QStringLiteral("top/duo")).isEmpty());
}

void TestEnginePlacement::goesBackToAnEarlierState()
{
    const auto start = m_engine->design();
    const QStringList before = placements(*m_engine);
    QCOMPARE(m_engine->remove(QStringLiteral("top/duo")), QString());
    QCOMPARE(m_engine->reset(QStringLiteral("top/v33")), QString());
    m_engine->setDesign(start);
    QCOMPARE(placements(*m_engine), before);
    const std::string name = "top/duo";
    QCOMPARE(m_engine->getResourceSummary(&name), std::string("2 of 4 placed"));
}

void TestEnginePlacement::removedResourcesComeBackWhereTheyStood()
{
    ProjectFolder folder;
    const auto engine = openWith(folder, DESIGN);
    const QStringList before = placements(*engine);
    QVERIFY(engine->remove(QStringLiteral("top/duo/a")).isEmpty());
    QVERIFY(engine->remove(QStringLiteral("top/duo")).isEmpty());
    QCOMPARE(
        engine->restore(QStringLiteral("top/duo/a")), QStringLiteral("top/duo/a is part of top/duo, which is removed"));
    QCOMPARE(engine->restore(QStringLiteral("top/mono")), QStringLiteral("no resource \"top/mono\" was removed"));
    QVERIFY(engine->place(QStringLiteral("top/quad/ref"), idOf(*engine, QStringLiteral("REF_L"))).isEmpty());
    QCOMPARE(engine->restore(QStringLiteral("top/duo")),
        QStringLiteral("top/duo/ref is fixed on REF_L, which is occupied by top/quad/ref"));
    QVERIFY(engine->reset(QStringLiteral("top/quad/ref")).isEmpty());
    QVERIFY(engine->restore(QStringLiteral("top/duo")).isEmpty());
    QVERIFY(engine->restore(QStringLiteral("top/duo/a")).isEmpty());
    QVERIFY(!engine->restore(QStringLiteral("top/duo/a")).isEmpty());
    QVERIFY(placements(*engine).contains(QStringLiteral("duo/ref@REF_L"))); // is fixed there
    QVERIFY(!placements(*engine).contains(QStringLiteral("duo/a@U0_CH0")));
    QVERIFY(engine->place(QStringLiteral("top/duo/a"), idOf(*engine, QStringLiteral("U0_CH0"))).isEmpty());
    QCOMPARE(placements(*engine), before);
}

// Where a fixed part would be may have become wrong in the meantime.
void TestEnginePlacement::whatWouldBreakARuleDoesNotComeBack()
{
    ProjectFolder folder;
    const auto engine = openWith(folder, R"([
      {"name": "ip", "type": "IP", "children": [
        {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0", "fixed": true}]},
      {"name": "clock", "type": "EXTREF", "feeds": ["ip"], "site": "REF_L"}])");
    QCOMPARE(engine->remove(QStringLiteral("top/ip")), QString());
    QCOMPARE(engine->place(QStringLiteral("top/clock"), idOf(*engine, QStringLiteral("REF_R"))), QString());
    QCOMPARE(engine->restore(QStringLiteral("top/ip")), QStringLiteral("top/clock on REF_R does not reach U0"));
    QCOMPARE(placements(*engine), QStringList{"clock@REF_R"});
    QCOMPARE(engine->place(QStringLiteral("top/clock"), idOf(*engine, QStringLiteral("REF_L"))), QString());
    QCOMPARE(engine->restore(QStringLiteral("top/ip")), QString());
    QCOMPARE(placements(*engine), (QStringList{"ip/a@U0_CH0", "clock@REF_L"}));
}

// Also where the device file names it on one side only.
void TestEnginePlacement::neighboursAreSoBothWays()
{
    ProjectFolder folder;
    folder.write(QStringLiteral("device.json"), R"({"name": "D", "drawing": "d.svg",
      "kinds": [{"name": "UNIT", "accepts": ["IP"]}, {"name": "CHANNEL", "accepts": ["DCUCHANNEL"]}],
      "sites": [
        {"id": 1, "name": "U0", "kind": "UNIT", "group": "U0", "neighbours": ["U1"]},
        {"id": 2, "name": "C0", "kind": "CHANNEL", "group": "U0"},
        {"id": 3, "name": "U1", "kind": "UNIT", "group": "U1"},
        {"id": 4, "name": "C1", "kind": "CHANNEL", "group": "U1"},
        {"id": 5, "name": "alone", "kind": "UNIT"}]})");
    const QByteArray design = R"([{"name": "ip", "type": "IP", "children": [
      {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}]}])";
    for (const QStringList& order : {QStringList{"C0", "C1"}, QStringList{"C1", "C0"}}) {
        const auto engine = openWith(folder, design);
        QCOMPARE(engine->place(QStringLiteral("top/ip/a"), idOf(*engine, order[0])), QString());
        QCOMPARE(engine->place(QStringLiteral("top/ip/b"), idOf(*engine, order[1])), QString());
        QCOMPARE(engine->place(QStringLiteral("top/ip"), 5), QStringLiteral("alone has no channels"));
    }
}

ZEL_TEST_MAIN(TestEnginePlacement)
#include "tst_engineplacement.moc"
