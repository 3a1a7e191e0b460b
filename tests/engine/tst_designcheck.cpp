// SPDX-License-Identifier: MIT
#include "tests/engine/designstate.h"
#include "tests/engine/openengine.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

using namespace mirn::zelengine;

namespace {

const char* const DESIGN = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}, {"name": "ref", "type": "EXTREF"}]},
  {"name": "group", "children": [{"name": "pll", "type": "PLL"}]},
  {"name": "v33", "type": "UVCCIO", "voltage": "3.3 V"},
  {"name": "v18", "type": "UVCCIO", "voltage": "1.8 V"}
])";

QString text(const Problem& problem)
{
    QStringList ids;
    for (int id : problem.sites)
        ids.append(QString::number(id));
    return (problem.severity == Problem::Severity::Error ? "error: " : "warning: ") + problem.sentence + " ["
        + problem.resources.join(' ') + "] [" + ids.join(' ') + ']';
}

} // namespace

class TestDesignCheck : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // The problems are those that a state without anything on its sites does not have.
    void findsWhatIsWrong_data()
    {
        const Rows<QStringList, QStringList> row;
        row("a legal state", {"duo/a@U0_CH0", "duo/b@U1_CH0", "duo/ref@REF_L", "v33@V0_1", "v18@V1_1"}, {});
        row("channels apart are one problem", {"duo/a@U0_CH0", "duo/b@U2_CH0"},
            {"error: top/duo/a cannot stay on U0_CH0: top/duo/b is in U2, which is not next to U0 "
             "[top/duo/a top/duo/b] [11 31]"});
        row("a clock out of reach", {"duo/a@U2_CH0", "duo/ref@REF_L"},
            {"error: top/duo/a cannot stay on U2_CH0: top/duo/ref on REF_L does not reach U2 "
             "[top/duo/a top/duo/ref] [31 40]"});
        row("two voltages in a bank", {"v33@V0_1", "v18@V0_2"},
            {"error: top/v33 cannot stay on V0_1: top/v33 needs 3.3 V, but top/v18 gives 1.8 V to BANK0 "
             "[top/v33 top/v18] [60 61]"});
        row("a rule without another placement", {"group/pll@U0_PLL"},
            {"error: top/group/pll cannot stay on U0_PLL: U0_PLL serves only U0, where top/group/pll feeds nothing "
             "[top/group/pll] [13]"});
        row("a site out of use, with the site that carries the setting", {"duo/a@U0_CH0", "U0 CH0=OFF", "U0 CH1=OFF"},
            {"error: top/duo/a is on U0_CH0, which is out of use because CH0 is OFF [top/duo/a] [11 10]"});
        row("a free site out of use", {"U0 CH0=OFF", "U0 CH1=OFF"}, {});
        row("half of a common value", {"U0 CH1=OFF"},
            {"error: CH1 of U0 is OFF, which is possible for CH0 and CH1 together only [] [10]"});
        row("common values that share a key", {"U2 B=PAIR", "U2 C=PAIR"}, {});
        row("half of one of them", {"U2 A=TWIN", "U2 B=PAIR", "U2 C=PAIR"},
            {"error: A of U2 is TWIN, which is possible for A and B together only [] [30]"});
    }

    void findsWhatIsWrong()
    {
        const auto [state, expected] = row<QStringList, QStringList>();
        m_engine = openEngine(m_folder.path());
        QCOMPARE(static_cast<int>(m_engine->problems().size()), 6); // what is kept of them must not outlive a change
        enterState(*m_engine, state);
        QStringList errors;
        QStringList warnings;
        for (const Problem& problem : m_engine->problems()) {
            (problem.severity == Problem::Severity::Error ? errors : warnings).append(text(problem));
            QVERIFY(problem.severity != Problem::Severity::Error || warnings.isEmpty()); // errors come first
        }
        QCOMPARE(errors, expected);
        const int placed = static_cast<int>(state.filter("@").size());
        QCOMPARE(static_cast<int>(warnings.size()), 6 - placed);
    }

    void saysWhatIsNotPlaced_data()
    {
        const Rows<QByteArray, QString, QString> row;
        row("while a site is free", "EXTREF", "x@REF_L", "");
        row("while all sites are occupied", "EXTREF", "x@REF_L y@REF_R",
            ", and all sites for resources of type EXTREF are occupied");
        row("on a device without such sites", "PLL", "", ", and the device has no site for resources of type PLL");
    }

    void saysWhatIsNotPlaced()
    {
        const auto [type, state, addition] = row<QByteArray, QString, QString>();
        QByteArray resources
            = R"([{"name": "x", "type": "T"}, {"name": "y", "type": "T"}, {"name": "z", "type": "T"}])";
        ProjectFolder folder(resources.replace("\"T\"", '"' + type + '"'));
        folder.write("device.json", smallDevice().replace("\"PLL\"]", "\"UVCCIO\"]"));
        m_engine = openEngine(folder.path());
        enterState(*m_engine, state.split(' ', Qt::SkipEmptyParts));
        QCOMPARE(text(m_engine->problems().back()), "warning: top/z is not placed" + addition + " [top/z] []");
    }

    void resourceIsDescribed_data()
    {
        const Rows<QStringList> row; // the lines after the name
        row("duo", {"Unit, 1 of 3 placed", "Fed by top/duo/ref (not placed)"});
        row("duo/a", {"Channel, on U2_CH0", "Fed by top/duo/ref (not placed)"});
        row("duo/b", {"Channel, not placed", "Fed by top/duo/ref (not placed)"});
        row("duo/ref", {"Reference, not placed, 100 MHz", "Feeds top/duo"}); // once, although it has two channels
        row("group", {});
        row("v33",
            {"Supply, on V0_1", "Needs 3.3 V",
                "top/v33 cannot stay on V0_1: top/v33 needs 3.3 V, but top/v18 gives 1.8 V to BANK0"});
        row("v18",
            {"Supply, on V0_2", "Needs 1.8 V",
                "top/v33 cannot stay on V0_1: top/v33 needs 3.3 V, but top/v18 gives 1.8 V to BANK0"});
    }

    void resourceIsDescribed()
    {
        const std::string name = "top/" + std::string(QTest::currentDataTag());
        const auto [lines] = row<QStringList>();
        m_engine = openEngine(m_folder.path());
        enterState(*m_engine, {"duo/a@U2_CH0", "v33@V0_1", "v18@V0_2"});
        QCOMPARE(QString::fromStdString(m_engine->describe(&name)).split('\n'),
            QStringList(QString::fromStdString(name)) + lines);
    }

private:
    const ProjectFolder m_folder{DESIGN};
    std::unique_ptr<ReferenceEngine> m_engine;
};

ZEL_TEST_MAIN(TestDesignCheck)
#include "tst_designcheck.moc"
