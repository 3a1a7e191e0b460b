// SPDX-License-Identifier: MIT
#include "host/commandline/commandline.h"
#include "tests/host/hostfiles.h"
#include "tests/program/batchprogram.h"
#include "tests/support/pixels.h"
#include "tests/support/testmain.h"

#include <QImage>
#include <QRegularExpression>

using mirn::zelchip::CommandLine;

namespace {

// Runs the program without a display or a choice of platform, and in the poorest locale.
Outcome runProgram(const QStringList& arguments, const QString& scaleFactor = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_RUNTIME_DIR", "LANG"})
        environment.remove(name);
    environment.insert("LC_ALL", "C");
    if (!scaleFactor.isEmpty())
        environment.insert("QT_SCALE_FACTOR", scaleFactor);
    Outcome outcome = run(ZELCHIP_PROGRAM, arguments, environment);
    // Without an argument the program opens the sample of this build, in which somebody may be at work.
    static const QRegularExpression Recovered("^zelchip: \\d+ changes? that w\\w+ not saved \\w+ back\\.\n");
    outcome.errors = QString::fromUtf8(outcome.errors).remove(Recovered).toUtf8();
    return outcome;
}

} // namespace

// The program as a whole, and how it understands its arguments.
class TestProgram : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void answers_data()
    {
        // Arguments, where %1 is a folder, the status, output and errors, both as patterns.
        const Rows<QString, QString, QString, QString> row;
        row("version", "--version", "0", "^zelchip " ZELCHIP_VERSION "\n$", "^$");
        row("help", "--help", "0", "^Usage: zelchip .*--snapshot.*--fresh.*/zelchip/zelchip.ini\\n", "^$");
        row("how to export", "export --help", "0", "^Usage: zelchip export .*--template.*tcl-per-resource", "^$");
        row("an export without a template", "export nowhere", "2", "^$", "^zelchip: export takes a template.*--help");
        row("a place for nothing", "place nowhere", "2", "^$", "^zelchip: place takes a table.*zelchip place --help");
        row("unknown option", "--colour", "2", "^$", "^zelchip: .*colour.*--help");
        row("help of the import", "import --help", "0", "^Usage: zelchip import .*--sites.*--replace", "^$");
        row("an import", "import -o %1/made --sites %1/sites.csv --columns width=w --y up", "0", "^$",
            "^zelchip: [^\n]+/made: 1 sites of 1 kinds");
        row("an import over a folder that is no project", "import -o %1 --sites %1/sites.csv --replace", "1", "^$",
            "^zelchip: [^\n]+ is no project; expected");
        row("an import without sites", "import -o %1/made", "2", "^$", "--sites SITES.csv.*import --help");
        row("an import of an unknown column", "import -o %1/made --sites s --columns wide=w", "2", "^$", "wide=w");
        row("no display", "", "1", "^$", "^zelchip: There is no display.*--snapshot");
        row("nothing to open", "no\xc3\xa4.svg --snapshot x.png", "1", "^$",
            "^zelchip: no\xc3\xa4.svg: there is no such file or folder.\n$");
        row("a place that cannot be written", "--snapshot /nowhere/x.png", "1", "^$",
            "^zelchip: /nowhere/x.png: the image cannot be written: [^\n]+\n$");
        row("a drawing with a mistake", "%1/bad.svg --snapshot %1/x.png", "1", "^$", "^zelchip: [^\n]+/bad.svg:3:");
        row("an unknown image format", "--snapshot x.doc", "1", "^$", "^zelchip: x.doc: .*'doc'.*png");
    }

    void answers()
    {
        const auto [arguments, status, output, errors] = row<QString, QString, QString, QString>();
        HostFiles files;
        files.write("bad.svg", "<svg>\n<rect\n</svg>");
        files.write("sites.csv", "name,kind,x,y,w,height\na,PAD,0,0,1,1\n");
        const auto dot = QRegularExpression::DotMatchesEverythingOption;
        QStringList words = arguments.split(' ', Qt::SkipEmptyParts);
        const Outcome outcome = runProgram(words.replaceInStrings("%1", files.path(".")));
        QCOMPARE(outcome.status, status.toInt());
        QVERIFY2(QRegularExpression(output, dot).match(outcome.output).hasMatch(), outcome.output.constData());
        QVERIFY2(QRegularExpression(errors, dot).match(QString::fromUtf8(outcome.errors)).hasMatch(), outcome.errors);
        QVERIFY(!QFileInfo::exists(files.path("x.png")));
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
            QVERIFY(
                zeltest::colorsIn(image, image.rect()).contains(qRgb(0xa0, 0xc0, 0xe0))); // the channel of the drawing
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
        QVERIFY(zeltest::colorsIn(image, image.rect()).size() > 100);
    }

    // The program ends with the script's status.
    void scriptsWriteToTheStreams()
    {
        HostFiles files;
        const QString script = files.write("streams.tcl",
            "puts {out \303\244}\nputs stderr err\nputs -nonewline {the }\nputs rest\nexit 3\nputs never\n");
        for (const char* option : {"--batch", "--snapshot never.png --script"}) {
            const QStringList options = QString(option).split(' ');
            const Outcome outcome = runProgram(QStringList{files.project.path()} + options + QStringList{script});
            QCOMPARE(outcome.status, 3);
            QCOMPARE(outcome.output, "out \u00e4\nthe rest\n");
            QCOMPARE(outcome.errors, "err\n");
        }
    }

    void checkTellsErrorsByTheStatus()
    {
        HostFiles files(R"([{"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"}, {"name": "b", "type": "PLL"}])");
        QStringList arguments{files.project.path(), "--check"};
        const Outcome sound = runProgram(arguments);
        QCOMPARE(sound.errors, "zelchip: warning: top/b is not placed\n");
        QCOMPARE(sound.status, 0);
        arguments += {"--batch", files.write("off.tcl", "zel_setting -id U0 -key CH0 -value OFF\n")};
        const Outcome broken = runProgram(arguments);
        QCOMPARE(broken.errors,
            "zelchip: error: top/a is on U0_CH0, which is out of use because CH0 is OFF\n"
            "zelchip: warning: top/b is not placed\n");
        QCOMPARE(broken.status, 1);
    }

    // The window has its size when the script begins, and what the script zooms stays zoomed.
    void scriptsFindTheWindowInPlace()
    {
        HostFiles files;
        const QByteArray script = "zel_view zoom 11\nset a [zel_view where -id 11]\nafter 500\n"
                                  "puts [expr {$a eq [zel_view where -id 11]}]\nexit\n";
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QT_QPA_PLATFORM", "offscreen");
        const Outcome outcome
            = run(ZELCHIP_PROGRAM, {files.project.path(), "--script", files.write("zoom.tcl", script)}, environment);
        QCOMPARE(outcome.errors + outcome.output, "1\n");
    }

    // A snapshot that the script itself takes shows it as well.
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
        const Rows<QString, QString> row; // the arguments, and what they mean or what the error must name
        row("nothing opens the sample", "--", "window  -1x-1");
        row("a path", "project", "window project -1x-1");
        row("a path that looks like an option, after two dashes", "-- -x.svg", "window -x.svg -1x-1");
        row("a size", "--size 800x600", "window  800x600");
        row("the smallest size", "--size=640x400", "window  640x400");
        row("a snapshot, options last", "a.svg --snapshot b.png --size 1000x700", "snapshot a.svg 1000x700 b.png");
        row("help", "-h", "help  -1x-1");
        row("help goes before the version", "--version --help", "help  -1x-1");
        row("the version goes before a snapshot", "--snapshot b.png --version", "version  -1x-1 b.png");
        row("an unknown option", "--colour", "error: colour");
        row("two paths", "a.svg b.svg", "error: b.svg");
        row("an empty path", "''", "error: empty");
        row("a snapshot without a file", "--snapshot", "error: --snapshot");
        row("a snapshot with an empty file name", "--snapshot ''", "error: --snapshot");
        row("a batch with a window", "--batch a.tcl --snapshot b.png", "error: --batch shows no window");
        row("a check with a window", "--check --script a.tcl", "error: --check shows no window");
        row("a check without a script", "project --check", "check project -1x-1");
        row("a script without a file", "--script ''", "error: --script");
        row("a size that is one number", "--size 800", "error: 800");
        row("a size with something behind it", "--size 800x600px", "error: 800x600px");
        row("a negative size", "--size=-800x600", "error: -800x600");
        row("a size below the window's parts", "--size 639x400", "error: 640x400");
        row("a size beyond memory", "--size 16385x1000", "error: 16384");
        row("a size beyond integers", "--size 99999999999x1000", "error: 99999999999");
    }

    void understandsArguments()
    {
        using Task = CommandLine::Task;
        const auto [arguments, expected] = row<QString, QString>();
        const CommandLine found = parsed(arguments);
        if (expected.startsWith("error: ")) {
            QCOMPARE(found.task, Task::ReportError);
            QVERIFY2(found.error.contains(expected.mid(7)), qPrintable(found.error));
            return;
        }
        const QMap<Task, QString> tasks{{Task::ShowWindow, "window"}, {Task::SaveSnapshot, "snapshot"},
            {Task::RunBatch, "check"}, {Task::PrintHelp, "help"}, {Task::PrintVersion, "version"}};
        const QString size = QString("%1x%2").arg(found.windowSize.width()).arg(found.windowSize.height());
        QCOMPARE(
            (QStringList{tasks.value(found.task), found.path, size, found.snapshotFile}.join(' ').trimmed()), expected);
        QCOMPARE(found.error, QString());
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
