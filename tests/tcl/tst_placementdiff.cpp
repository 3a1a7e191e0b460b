// SPDX-License-Identifier: MIT
#include "host/design/placementdiff.h"
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QTest>

using namespace zeltest;
using mirn::zelchip::PlacementDifference;
using mirn::zelchip::placementDifferences;
using mirn::zelchip::readPlacement;
using mirn::zelchip::readSavedPlacement;

namespace {

QString texts(const std::vector<PlacementDifference>& differences)
{
    static const QStringList Names{"existence", "place", "lock", "parameter", "setting"};
    QStringList result;
    for (const PlacementDifference& difference : differences) {
        QStringList sites;
        for (int site : difference.sites)
            sites.append(QString::number(site));
        result.append(QStringList{difference.name, Names[static_cast<int>(difference.what)] + difference.key,
            difference.from + '>' + difference.to, sites.join(',')}
                          .join(' '));
    }
    return result.join("; ");
}

} // namespace

class TestPlacementDiff : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void tellsWhatIsDifferent_data()
    {
        const Rows<QStringList, QString> row;
        row("nothing", {"zel_resource place -rsc top/core -id 50", "undo"}, "");
        row("a move", {"zel_resource place -rsc top/duo/a -id 21"}, "top/duo/a place U0_CH0>U1_CH0 11,21");
        row("a first place and a lock", {"zel_resource place -rsc top/core -id 50", "zel_resource lock -ip top/core"},
            "top/core place >PLL_CORE 50; top/core lock 0>1 50");
        row("two that swap",
            {"zel_resource place -rsc top/duo/a -id 21", "zel_resource place -rsc {top/my ip/a[1]$x} -id 11"},
            "top/duo/a place U0_CH0>U1_CH0 11,21; top/my ip/a[1]$x place >U0_CH0 11");
        row("a removal with what had a place", {"zel_resource remove -ip top/duo"},
            "top/duo existence 1>0 ; top/duo/a place U0_CH0> 11; top/duo/ref place REF_L> 40");
        row("a part that was removed before", {"zel_resource remove -ip top/duo/b", "zel_resource remove -ip top/duo"},
            "top/duo existence 1>0 ; top/duo/a place U0_CH0> 11; top/duo/ref place REF_L> 40");
        row("a parameter", {"zel_resource configure -ip top/duo -key rate -value 5"}, "top/duo parameterrate 2.5>5 ");
        row("a setting that holds for two", {"zel_setting -id 10 -key CH0 -value OFF"},
            "U0 settingCH0 SLOW>OFF 10; U0 settingCH1 SLOW>OFF 10");
    }

    // Nothing was saved at first; then that is read as another's file as well.
    void tellsWhatIsDifferent()
    {
        const auto [changes, differences] = row<QStringList, QString>();
        EditedProject project;
        QString error;
        QCOMPARE(project.run(changes), QString());
        const QStringList state = project.state();
        const QByteArray journal = project.journal();
        const auto untouched = readSavedPlacement(project.editor(), &error);
        QVERIFY2(untouched, qPrintable(error));
        QCOMPARE(texts(placementDifferences(*untouched, project.engine())), differences);
        QCOMPARE(project.journal(), journal);
        QCOMPARE(project.run("save"), QString());
        const auto saved = readPlacement(project.editor(), project.directory(), &error); // the folder's file
        QVERIFY2(saved, qPrintable(error));
        QCOMPARE(texts(placementDifferences(*untouched, *saved)), differences);
        QCOMPARE(texts(placementDifferences(*saved, project.engine())), QString());
        QCOMPARE(project.state(), state);
    }

    void saysWhatIsWrongWithTheFile_data()
    {
        const Rows<QByteArray, QString> row;
        row("another design", "zel_resource place -rsc other/x -id 50\n",
            ":1: refused zel_resource place -rsc other/x -id 50 (there is no resource \"other/x\")");
        row("a site that is taken", "# a comment\nzel_resource place -rsc top/duo/b -id 11\n",
            ":2: refused zel_resource place -rsc top/duo/b -id 11 (U0_CH0 is occupied by top/duo/a)");
        row("a lock before the place", "zel_resource lock -ip top/core\n",
            ":1: refused zel_resource lock -ip top/core (top/core is not placed, and only what is placed can be "
            "locked)");
        row("something else", "{}\n", ":1: refused {} (expected zel_resource or zel_setting)");
        row("a line that is cut off", "zel_resource reset -ip top/duo/a", ": the last line is cut off");
        row("a journal", "# follows " + QByteArray(64, '0') + "\nzel_resource reset -ip top/duo/a\n",
            ":1: the file is a journal");
    }

    void saysWhatIsWrongWithTheFile()
    {
        const auto [content, reason] = row<QByteArray, QString>();
        EditedProject project;
        const QStringList state = project.state();
        QVERIFY(QDir().mkpath(project.directory()));
        const QString file = project.directory() + "/other.tcl";
        QString error;
        QVERIFY(!readPlacement(project.editor(), file, &error));
        const QString expected = "; expected a placement file of the design \"top\"";
        QCOMPARE(error, file + ": there is no such file" + expected);
        writeFile(file, content);
        QVERIFY(!readPlacement(project.editor(), file, &error));
        QCOMPARE(error, file + reason + expected);
        QCOMPARE(project.state(), state);
        QCOMPARE(contentOf(file), content);
        QCOMPARE(QDir(project.directory()).entryList(QDir::Files), QStringList("other.tcl"));
    }
};

ZEL_TEST_MAIN(TestPlacementDiff)
#include "tst_placementdiff.moc"
