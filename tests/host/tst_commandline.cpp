// SPDX-License-Identifier: MIT
#include "host/commandline/commandline.h"
#include "tests/support/testmain.h"

#include <QTest>

using mirn::zelchip::CommandLine;
using mirn::zelchip::parseCommandLine;

Q_DECLARE_METATYPE(CommandLine::Task)

class TestCommandLine : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void understands_data();
    void understands();
    void refuses_data();
    void refuses();
};

void TestCommandLine::understands_data()
{
    using Task = CommandLine::Task;
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<Task>("task");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QString>("snapshotFile");
    const QSize usual(1600, 1000);
    QTest::newRow("nothing opens the sample") << QStringList() << Task::ShowWindow << "" << usual << "";
    QTest::newRow("a path") << QStringList{"my project"} << Task::ShowWindow << "my project" << usual << "";
    QTest::newRow("a path that looks like an option, after two dashes")
        << QStringList{"--", "-x.svg"} << Task::ShowWindow << "-x.svg" << usual << "";
    QTest::newRow("a size") << QStringList{"--size", "800x600"} << Task::ShowWindow << "" << QSize(800, 600) << "";
    QTest::newRow("the smallest size") << QStringList{"--size=640x400"} << Task::ShowWindow << "" << QSize(640, 400)
                                       << "";
    QTest::newRow("a snapshot, options behind the path")
        << QStringList{"a.svg", "--snapshot", "b.png", "--size", "1000x700"} << Task::SaveSnapshot << "a.svg"
        << QSize(1000, 700) << "b.png";
    QTest::newRow("help") << QStringList{"-h"} << Task::PrintHelp << "" << usual << "";
    QTest::newRow("help goes before the version")
        << QStringList{"--version", "--help"} << Task::PrintHelp << "" << usual << "";
    QTest::newRow("the version goes before a snapshot")
        << QStringList{"--snapshot", "b.png", "--version"} << Task::PrintVersion << "" << usual << "b.png";
}

void TestCommandLine::understands()
{
    QFETCH(QStringList, arguments);
    const CommandLine commandLine = parseCommandLine(QStringList("zelchip") + arguments);
    QTEST(commandLine.task, "task");
    QTEST(commandLine.path, "path");
    QTEST(commandLine.windowSize, "size");
    QTEST(commandLine.snapshotFile, "snapshotFile");
    QCOMPARE(commandLine.error, QString());
}

void TestCommandLine::refuses_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("about"); // what the message must name
    QTest::newRow("an unknown option") << QStringList{"--batch"} << "batch";
    QTest::newRow("two paths") << QStringList{"a.svg", "b.svg"} << "b.svg";
    QTest::newRow("an empty path") << QStringList{""} << "empty";
    QTest::newRow("a snapshot without a file") << QStringList{"--snapshot"} << "--snapshot";
    QTest::newRow("a snapshot with an empty file name") << QStringList{"--snapshot", ""} << "--snapshot";
    QTest::newRow("a size that is one number") << QStringList{"--size", "800"} << "800";
    QTest::newRow("a size with something behind it") << QStringList{"--size", "800x600px"} << "800x600px";
    QTest::newRow("a negative size") << QStringList{"--size=-800x600"} << "-800x600";
    QTest::newRow("a size below the window's parts") << QStringList{"--size", "639x400"} << "640x400";
    QTest::newRow("a size beyond memory") << QStringList{"--size", "16385x1000"} << "16384";
    QTest::newRow("a size beyond integers") << QStringList{"--size", "99999999999x1000"} << "99999999999";
}

void TestCommandLine::refuses()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, about);
    const CommandLine commandLine = parseCommandLine(QStringList("zelchip") + arguments);
    QCOMPARE(commandLine.task, CommandLine::Task::ReportError);
    QVERIFY2(commandLine.error.contains(about), qPrintable(commandLine.error));
}

ZEL_TEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
