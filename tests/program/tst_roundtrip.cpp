// SPDX-License-Identifier: MIT
#include "tests/program/batchprogram.h"
#include "tests/program/sampleproject.h"
#include "tests/support/files.h"
#include "tests/support/testmain.h"

#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int SitesOfUnit = 10;
constexpr int Units = 10'000;
constexpr int Pairs = 500; // of resources that share a unit

// Units in a square, each with sites of two kinds.
QByteArray manySites()
{
    QByteArray table = "name,kind,x,y,width,height,group\n";
    for (int unit = 0; unit < Units; ++unit) {
        const QByteArray name = "U" + QByteArray::number(unit);
        for (int n = 0; n < SitesOfUnit; ++n) {
            table += name + '_' + QByteArray::number(n) + (n % 2 ? ",RAM," : ",DSP,");
            table += QByteArray::number(unit % 100 * 12 + n) + ',' + QByteArray::number(unit / 100 * 3) + ",0.8,2,";
            table += name + '\n';
        }
    }
    return table;
}

// A memory and a multiplier that share a unit, each pair near to the one before.
void addPairs(QByteArray* resources, QByteArray* connections)
{
    *resources = "name,kind,parent\ncore,,\n";
    *connections = "from,to,rule\n";
    for (int n = 0; n < Pairs; ++n) {
        const QByteArray number = QByteArray::number(n);
        *resources += "m" + number + ",RAM,core\nd" + number + ",DSP,core\n";
        *connections += "core/m" + number + ",core/d" + number + ",same-unit\n";
        if (n > 0)
            *connections += "core/m" + QByteArray::number(n - 1) + ",core/m" + number + ",near\n";
    }
}

} // namespace

// What is planned comes out as constraints, and these make the same plan.
class TestRoundTrip : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void importedDevice()
    {
        QByteArray resources;
        QByteArray connections;
        addPairs(&resources, &connections);
        const QStringList tables{"--sites", write("sites.csv", manySites()), "--resources",
            write("resources.csv", resources), "--connections", write("connections.csv", connections)};
        for (const char* const project : {"planned", "again"})
            QCOMPARE(zelchip(QStringList{"import", "-o", path(project)} + tables).status, 0);
        const QByteArray plan = planned(path("planned"));
        QCOMPARE(plan.count('\n'), 1 + 2 * Pairs);
        QCOMPARE(placedFrom(plan, path("again")), plan);
    }

    void sample()
    {
        const SampleProject first;
        const SampleProject second;
        const QByteArray before = zelchip({"export", second.path(), "--template", "csv"}).output;
        const QByteArray plan = planned(first.path());
        QVERIFY(plan.count('\n') > before.count('\n'));
        QCOMPARE(placedFrom(plan, second.path()), plan);
    }

private:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& content) const
    {
        return zeltest::writeFile(path(name), content);
    }

    static Outcome zelchip(const QStringList& arguments) { return run(ZELCHIP_PROGRAM, arguments); }

    // Places what can be placed, and returns all placements as a table.
    QByteArray planned(const QString& project) const
    {
        const QString script = write("plan.tcl", "zel_resource place -auto -partial\nzel_project save\n");
        (void)zelchip({project, "--batch", script});
        return zelchip({"export", project, "--template", "csv"}).output;
    }

    // The same of a project that gets its placements from a table.
    QByteArray placedFrom(const QByteArray& table, const QString& project) const
    {
        (void)zelchip({"place", project, write("table.csv", table)});
        return zelchip({"export", project, "--template", "csv"}).output;
    }

    QTemporaryDir m_folder;
};

ZEL_TEST_MAIN(TestRoundTrip)
#include "tst_roundtrip.moc"
