// SPDX-License-Identifier: MIT
#include "host/commandline/commandline.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

using mirn::zelchip::CommandLine;
using mirn::zelchip::parseCommandLine;

class TestCommandLine : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void understands_data();
    void understands();
    void refuses_data();
    void refuses();

private:
    // Of arguments that are separated by blanks; two quotes are an empty one.
    static CommandLine parsed(const QString& arguments)
    {
        return parseCommandLine(QString("zelchip " + arguments).remove("''").split(' '));
    }
};

void TestCommandLine::understands_data()
{
    zeltest::addRows({
        {"nothing opens the sample", "--", "window  1600x1000"},
        {"a path", "project", "window project 1600x1000"},
        {"a path that looks like an option, after two dashes", "-- -x.svg", "window -x.svg 1600x1000"},
        {"a size", "--size 800x600", "window  800x600"},
        {"the smallest size", "--size=640x400", "window  640x400"},
        {"a snapshot, options behind the path", "a.svg --snapshot b.png --size 1000x700",
            "snapshot a.svg 1000x700 b.png"},
        {"help", "-h", "help  1600x1000"},
        {"help goes before the version", "--version --help", "help  1600x1000"},
        {"the version goes before a snapshot", "--snapshot b.png --version", "version  1600x1000 b.png"},
    });
}

void TestCommandLine::understands()
{
    using Task = CommandLine::Task;
    const auto [arguments, expected] = zeltest::currentRow<2>();
    const CommandLine found = parsed(arguments);
    const QMap<Task, QString> tasks{{Task::ShowWindow, "window"}, {Task::SaveSnapshot, "snapshot"},
        {Task::PrintHelp, "help"}, {Task::PrintVersion, "version"}};
    const QString size = QStringLiteral("%1x%2").arg(found.windowSize.width()).arg(found.windowSize.height());
    QCOMPARE(
        (QStringList{tasks.value(found.task), found.path, size, found.snapshotFile}.join(' ').trimmed()), expected);
    QCOMPARE(found.error, QString());
}

void TestCommandLine::refuses_data()
{
    // With what the message must name.
    zeltest::addRows({
        {"an unknown option", "--colour", "colour"},
        {"two paths", "a.svg b.svg", "b.svg"},
        {"an empty path", "''", "empty"},
        {"a snapshot without a file", "--snapshot", "--snapshot"},
        {"a snapshot with an empty file name", "--snapshot ''", "--snapshot"},
        {"a batch with a window", "--batch a.tcl --snapshot b.png", "--batch shows no window"},
        {"a script without a file", "--script ''", "--script"},
        {"a size that is one number", "--size 800", "800"},
        {"a size with something behind it", "--size 800x600px", "800x600px"},
        {"a negative size", "--size=-800x600", "-800x600"},
        {"a size below the window's parts", "--size 639x400", "640x400"},
        {"a size beyond memory", "--size 16385x1000", "16384"},
        {"a size beyond integers", "--size 99999999999x1000", "99999999999"},
    });
}

void TestCommandLine::refuses()
{
    const auto [arguments, about] = zeltest::currentRow<2>();
    const CommandLine commandLine = parsed(arguments);
    QCOMPARE(commandLine.task, CommandLine::Task::ReportError);
    QVERIFY2(commandLine.error.contains(about), qPrintable(commandLine.error));
}

ZEL_TEST_MAIN(TestCommandLine)
#include "tst_commandline.moc"
