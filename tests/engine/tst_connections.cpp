// SPDX-License-Identifier: MIT
#include "engine/rules/connections.h"
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

using namespace mirn::zelengine;

namespace {

// An IP of three channels with a clock of its own, another IP that a clock outside serves, and supplies.
const char* const DESIGN = R"([
  {"name": "ip", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}, {"name": "c", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF"}]},
  {"name": "solo", "type": "IP", "children": [{"name": "d", "type": "DCUCHANNEL"}]},
  {"name": "pll", "type": "PLL", "feeds": ["solo"]},
  {"name": "free", "type": "PLL"},
  {"name": "v33", "type": "UVCCIO", "voltage": "3.3 V"},
  {"name": "any", "type": "UVCCIO"},
  {"name": "v18", "type": "UVCCIO", "voltage": "1.8 V"}
])";

// Those that are there whatever is placed.
const QStringList CLOCKS{"ip/ref>ip/a", "ip/ref>ip/b", "ip/ref>ip/c", "pll>solo/d"};
const QStringList CHAIN{"ip/a>ip/b", "ip/b>ip/c"};

} // namespace

class TestConnections : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // A state is written as placements "RESOURCE@SITE", which no rule is asked about.
    void connectsWhatTheRulesLookAt_data()
    {
        const Rows<QString, QStringList> row;
        row("nothing placed", "", CLOCKS + CHAIN);
        row("all in order", "ip/a@U0_CH0 ip/b@U0_CH1 ip/c@U1_CH0 ip/ref@REF_L solo/d@U1_CH1 pll@PLL_EDGE",
            CLOCKS + CHAIN);
        row("placed channels come first, and the others go to the first of them", "ip/b@U0_CH0 ip/c@U0_CH1",
            CLOCKS + QStringList{"ip/b>ip/c", "ip/b>ip/a"});
        row("a reference clock out of reach", "ip/a@U0_CH0 ip/ref@REF_R",
            {"ip/ref>ip/a: REF_R does not reach U0, where top/ip/a is", "ip/ref>ip/b", "ip/ref>ip/c", "ip/a>ip/b",
                "ip/a>ip/c", "pll>solo/d"});
        row("a PLL that reaches nothing, whether the channel is placed or not", "pll@PLL_CORE",
            CLOCKS.mid(0, 3) + CHAIN + QStringList{"pll>solo/d: PLL_CORE reaches no unit, but top/pll feeds top/solo"});
        row("neighbours in the chain that are no neighbours on the device", "ip/a@U0_CH0 ip/b@U2_CH0 ip/c@U2_CH1",
            CLOCKS + QStringList{"ip/a>ip/b: top/ip/b is in U2, which is not next to U0", "ip/b>ip/c"});
        row("channels apart that the chain does not connect", "ip/a@U1_CH0 ip/b@U0_CH0 ip/c@U2_CH0",
            CLOCKS
                + QStringList{"ip/a>ip/b", "ip/b>ip/c: top/ip/c is in U2, which is not next to U0",
                    "ip/a>ip/c: top/ip/c is in U2, which is not next to U1"});
        row("supplies of one bank", "v33@V0_1 any@V0_2 v18@V1_1", CLOCKS + CHAIN + QStringList{"v33>any"});
        row("supplies of two voltages", "v18@V0_2 v33@V0_1",
            CLOCKS + CHAIN + QStringList{"v33>v18: top/v33 needs 3.3 V, but top/v18 gives 1.8 V to BANK0"});
    }

    void connectsWhatTheRulesLookAt()
    {
        auto [state, expected] = row<QString, QStringList>();
        m_engine = openEngine(m_folder.path());
        enter(state);
        QStringList found = texts(m_engine->connections());
        found.sort();
        expected.sort();
        QCOMPARE(found, expected);
    }

    // Two voltages that the chain does not bring together, because a supply of any voltage is between them.
    void connectsSuppliesThatExcludeEachOther()
    {
        ProjectFolder folder(DESIGN);
        folder.write("device.json",
            smallDevice().replace(R"("name": "V1_1", "kind": "SUPPLY", "group": "BANK1")",
                R"("name": "V1_1", "kind": "SUPPLY", "group": "BANK0")"));
        m_engine = openEngine(folder.path());
        enter("v33@V0_1 any@V0_2 v18@V1_1");
        const QStringList found = texts(m_engine->connections());
        QVERIFY(found.contains("v33>any"));
        QVERIFY(found.contains("any>v18"));
        QVERIFY(found.contains("v33>v18: top/v33 needs 3.3 V, but top/v18 gives 1.8 V to BANK0"));
    }

    void findsAllPairsOfOne_data()
    {
        const Rows<QString, QStringList> row;
        row("a channel", "ip/a", {"ip/ref>ip/a", "ip/a>ip/b", "ip/a>ip/c: top/ip/c is in U2, which is not next to U0"});
        row("the last of the chain", "ip/c",
            {"ip/ref>ip/c", "ip/c>ip/a: top/ip/a is in U0, which is not next to U2",
                "ip/c>ip/b: top/ip/b is in U1, which is not next to U2"});
        row("a clock", "pll", {"pll>solo/d"});
        row("a supply", "any", {"any>v33", "any>v18"});
        row("an IP", "ip", {});
    }

    void findsAllPairsOfOne()
    {
        const auto [resource, expected] = row<QString, QStringList>();
        ProjectFolder folder(DESIGN);
        folder.write("device.json",
            smallDevice().replace(R"("name": "V1_1", "kind": "SUPPLY", "group": "BANK1")",
                R"("name": "V1_1", "kind": "SUPPLY", "group": "BANK0")"));
        m_engine = openEngine(folder.path());
        enter("ip/a@U0_CH0 ip/b@U1_CH0 ip/c@U2_CH0 v33@V0_1 any@V0_2 v18@V1_1");
        const std::string name = "top/" + resource.toStdString();
        QCOMPARE(texts(m_engine->connectionsOf(&name)), expected);
    }

    void followsEveryChange()
    {
        m_engine = openEngine(m_folder.path());
        QCOMPARE(m_engine->connections().front().toSite, -1);
        QVERIFY(m_engine->place("top/ip/a", 11).isEmpty());
        QCOMPARE(siteOf("top/ip/ref", "top/ip/a"), 11);
        QVERIFY(m_engine->remove("top/solo").isEmpty());
        QCOMPARE(static_cast<int>(m_engine->connections().size()), 5); // the PLL serves nothing now
        QVERIFY(m_engine->reset("top/ip").isEmpty());
        QCOMPARE(siteOf("top/ip/ref", "top/ip/a"), -1);
    }

private:
    void enter(const QString& state)
    {
        std::vector<Placement> placements;
        for (const QString& each : state.split(' ', Qt::SkipEmptyParts)) {
            const QStringList placement = each.split('@');
            placements.push_back(
                {m_engine->design().find("top/" + placement[0]), m_engine->device().site(placement[1])->id});
        }
        m_engine->setSites(placements);
    }

    static QStringList texts(const std::vector<zelconnection>& connections)
    {
        QStringList result;
        for (const zelconnection& each : connections) {
            const QString names = QString::fromStdString(each.from + '>' + each.to).remove("top/");
            result.append(each.broken.empty() ? names : names + ": " + QString::fromStdString(each.broken));
        }
        return result;
    }

    [[nodiscard]] int siteOf(const std::string& from, const std::string& to) const
    {
        for (const zelconnection& each : m_engine->connections()) {
            if (each.from == from && each.to == to)
                return each.toSite;
        }
        return -2;
    }

    const ProjectFolder m_folder{DESIGN};
    std::unique_ptr<ReferenceEngine> m_engine;
};

ZEL_TEST_MAIN(TestConnections)
#include "tst_connections.moc"
