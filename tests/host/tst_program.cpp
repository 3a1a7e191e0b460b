// SPDX-License-Identifier: MIT
#include "host/commandline/commandline.h"
#include "tests/host/hostfiles.h"
#include "tests/program/batchprogram.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

#include <QImage>
#include <QRegularExpression>

using mirn::zelchip::CommandLine;

namespace {

// Without a display, without a choice of platform, and in the poorest locale.
Outcome runProgram(const QStringList& arguments, const QString& scaleFactor = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR", "LANG"})
        environment.remove(name);
    environment.insert("LC_ALL", "C");
    if (!scaleFactor.isEmpty())
        environment.insert("QT_SCALE_FACTOR", scaleFactor);
    Outcome outcome = run(ZELCHIP_PROGRAM, arguments, environment);
    // Without an argument it is the sample of this build, in which somebody may be at work.
    static const QRegularExpression Recovered("^zelchip: \\d+ changes? that w\\w+ not saved \\w+ back\\.\n");
    outcome.errors = QString::fromUtf8(outcome.errors).remove(Recovered).toUtf8();
    return outcome;
}

QSet<QRgb> colorsOf(const QImage& image)
{
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    }
    return colors;
}

} // namespace

// The program as a whole, and how it understands its arguments.
class TestProgram : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void answers_data()
    {
        // Arguments, status, output and errors, both as patterns.
        zeltest::addRows({
            {"version", "--version", "0", "^zelchip " ZELCHIP_VERSION "\n$", "^$"},
            {"help", "--help", "0", "^Usage: zelchip .*--snapshot", "^$"},
            {"unknown option", "--colour", "2", "^$", "^zelchip: .*colour.*--help"},
            {"no display", "", "1", "^$", "^zelchip: There is no display.*--snapshot"},
            {"nothing to open", "no\xc3\xa4.svg --snapshot x.png", "1", "^$",
                "^zelchip: no\xc3\xa4.svg: there is no such file or folder.\n$"},
            {"a place that cannot be written", "--snapshot /nowhere/x.png", "1", "^$",
                "^zelchip: /nowhere/x.png: the image cannot be written: [^\n]+\n$"},
            {"an unknown image format", "--snapshot x.doc", "1", "^$", "^zelchip: x.doc: .*'doc'.*png"},
        });
    }

    void answers()
    {
        const auto [arguments, status, output, errors] = zeltest::currentRow<4>();
        HostFiles files;
        const auto dot = QRegularExpression::DotMatchesEverythingOption;
        const Outcome outcome = runProgram(arguments.split(' ', Qt::SkipEmptyParts));
        QCOMPARE(outcome.status, status.toInt());
        QVERIFY2(QRegularExpression(output, dot).match(outcome.output).hasMatch(), outcome.output.constData());
        QVERIFY2(QRegularExpression(errors, dot).match(QString::fromUtf8(outcome.errors)).hasMatch(), outcome.errors);
    }

    void namesWhatItCannotOpen()
    {
        HostFiles files;
        const QString drawing = files.write("bad.svg", "<svg>\n<rect\n</svg>");
        const QString snapshot = files.path("x.png");
        const Outcome outcome = runProgram({drawing, "--snapshot", snapshot});
        QCOMPARE(outcome.status, 1);
        QVERIFY2(outcome.errors.startsWith("zelchip: " + drawing.toUtf8() + ":3:"), outcome.errors);
        QVERIFY(!QFileInfo::exists(snapshot));
    }

    // The snapshot shows a project or a bare drawing, and the program says nothing.
    void savesASnapshot_data()
    {
        const Rows<QString, QString, QSize> row;
        row("as large as it was asked for", "800x500", {}, {800, 500});
        row("of the smallest window", "640x400", {}, {640, 400});
        row("for a finer screen", "700x450", "2", {1400, 900});
    }

    void savesASnapshot()
    {
        const auto [size, scaleFactor, pixels] = row<QString, QString, QSize>();
        HostFiles files;
        const QString snapshot = files.path("snap shot.png");
        for (const QString& path : {files.project.path(), files.write("bare.svg", smallDrawing())}) {
            QFile::remove(snapshot);
            const Outcome outcome = runProgram({path, "--snapshot", snapshot, "--size", size}, scaleFactor);
            QCOMPARE(outcome.status, 0);
            QCOMPARE(outcome.output + outcome.errors, QByteArray());
            const QImage image(snapshot);
            QCOMPARE(image.size(), pixels);
            QVERIFY(colorsOf(image).contains(qRgb(0xa0, 0xc0, 0xe0))); // the channel of the drawing
        }
    }

    void showsTheSampleByDefault()
    {
        HostFiles files;
        const QString snapshot = files.path("sample.png");
        const Outcome outcome = runProgram({"--snapshot", snapshot});
        QCOMPARE(outcome.errors, QByteArray());
        QCOMPARE(outcome.status, 0);
        const QImage image(snapshot);
        QCOMPARE(image.size(), QSize(1600, 1000));
        QVERIFY(colorsOf(image).size() > 100);
    }

    void scriptsWriteToTheStreams_data()
    {
        const Rows<QStringList> row; // the options before the script's name
        row("a batch", {"--batch"});
        row("in the window", {"--snapshot", "never.png", "--script"});
    }

    // The program ends with the script's status.
    void scriptsWriteToTheStreams()
    {
        const auto [options] = row<QStringList>();
        HostFiles files;
        const QString script = files.write("streams.tcl",
            "puts {out \303\244}\nputs stderr err\nputs -nonewline {the }\nputs rest\nexit 3\nputs never\n");
        const Outcome outcome = runProgram(QStringList{files.project.path()} + options + QStringList{script});
        QCOMPARE(outcome.status, 3);
        QCOMPARE(outcome.output, "out \u00e4\nthe rest\n");
        QCOMPARE(outcome.errors, "err\n");
    }

    // So does the snapshot that the script itself takes.
    void snapshotShowsWhatAScriptWrote()
    {
        HostFiles files;
        const QString inside = files.path("inside.png");
        const QByteArray script = "puts {a line}\nzel_view snapshot {" + inside.toUtf8() + "}\n";
        const auto pictureAfter = [&](const QByteArray& said) {
            const QString snapshot = files.path("after.png");
            runProgram({files.project.path(), "--script", files.write("said.tcl", said), "--snapshot", snapshot});
            return QImage(snapshot);
        };
        const QImage silent = pictureAfter({});
        QVERIFY(!silent.isNull());
        QVERIFY(pictureAfter(script) != silent);
        const QImage taken(inside);
        QCOMPARE(taken.size(), silent.size());
        QVERIFY(taken != silent);
    }

    void understandsArguments_data()
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

    void understandsArguments()
    {
        using Task = CommandLine::Task;
        const auto [arguments, expected] = zeltest::currentRow<2>();
        const CommandLine found = parsed(arguments);
        const QMap<Task, QString> tasks{{Task::ShowWindow, "window"}, {Task::SaveSnapshot, "snapshot"},
            {Task::PrintHelp, "help"}, {Task::PrintVersion, "version"}};
        const QString size = QString("%1x%2").arg(found.windowSize.width()).arg(found.windowSize.height());
        QCOMPARE(
            (QStringList{tasks.value(found.task), found.path, size, found.snapshotFile}.join(' ').trimmed()), expected);
        QCOMPARE(found.error, QString());
    }

    void refusesArguments_data()
    {
        // The arguments, and what the message must name.
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

    void refusesArguments()
    {
        const auto [arguments, about] = zeltest::currentRow<2>();
        const CommandLine commandLine = parsed(arguments);
        QCOMPARE(commandLine.task, CommandLine::Task::ReportError);
        QVERIFY2(commandLine.error.contains(about), qPrintable(commandLine.error));
    }

private:
    // The arguments are separated by blanks; two quotes are an empty one.
    static CommandLine parsed(const QString& arguments)
    {
        return mirn::zelchip::parseCommandLine(QString("zelchip " + arguments).remove("''").split(' '));
    }
};

ZEL_TEST_MAIN(TestProgram)
#include "tst_program.moc"
