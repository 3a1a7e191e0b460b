// SPDX-License-Identifier: MIT
#include "tests/host/hostfiles.h"
#include "tests/program/batchprogram.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

#include <QImage>
#include <QRegularExpression>

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

class TestProgram : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void answers_data();
    void answers();
    void namesWhatItCannotOpen();
    void savesASnapshot_data();
    void savesASnapshot();
    void showsTheSampleByDefault();
    void scriptsWriteToTheStreams_data();
    void scriptsWriteToTheStreams();
    void snapshotShowsWhatAScriptWrote();
};

void TestProgram::answers_data()
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

void TestProgram::answers()
{
    const auto [arguments, status, output, errors] = zeltest::currentRow<4>();
    HostFiles files;
    const auto dot = QRegularExpression::DotMatchesEverythingOption;
    const Outcome outcome = runProgram(arguments.split(' ', Qt::SkipEmptyParts));
    QCOMPARE(outcome.status, status.toInt());
    QVERIFY2(QRegularExpression(output, dot).match(outcome.output).hasMatch(), outcome.output.constData());
    QVERIFY2(QRegularExpression(errors, dot).match(QString::fromUtf8(outcome.errors)).hasMatch(), outcome.errors);
}

void TestProgram::namesWhatItCannotOpen()
{
    HostFiles files;
    const QString drawing = files.write("bad.svg", "<svg>\n<rect\n</svg>");
    const QString snapshot = files.path("x.png");
    const Outcome outcome = runProgram({drawing, "--snapshot", snapshot});
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.errors.startsWith("zelchip: " + drawing.toUtf8() + ":3:"), outcome.errors);
    QVERIFY(!QFileInfo::exists(snapshot));
}

// Of a project or a bare drawing, without a word.
void TestProgram::savesASnapshot_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("scaleFactor");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("as large as it was asked for") << "800x500" << QString() << QSize(800, 500);
    QTest::newRow("of the smallest window") << "640x400" << QString() << QSize(640, 400);
    QTest::newRow("for a finer screen") << "700x450"
                                        << "2" << QSize(1400, 900);
}

void TestProgram::savesASnapshot()
{
    QFETCH(QString, size);
    QFETCH(QString, scaleFactor);
    HostFiles files;
    const QString snapshot = files.path("snap shot.png");
    for (const QString& path : {files.project.path(), files.write("bare.svg", smallDrawing())}) {
        QFile::remove(snapshot);
        const Outcome outcome = runProgram({path, "--snapshot", snapshot, "--size", size}, scaleFactor);
        QCOMPARE(outcome.status, 0);
        QCOMPARE(outcome.output + outcome.errors, QByteArray());
        const QImage image(snapshot);
        QTEST(image.size(), "pixels");
        QVERIFY(colorsOf(image).contains(qRgb(0xa0, 0xc0, 0xe0))); // the channel of the drawing
    }
}

void TestProgram::showsTheSampleByDefault()
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

void TestProgram::scriptsWriteToTheStreams_data()
{
    QTest::addColumn<QStringList>("options"); // before and behind the script's name
    QTest::newRow("a batch") << QStringList{"--batch"};
    QTest::newRow("in the window") << QStringList{"--snapshot", "never.png", "--script"};
}

// With the status that the script ends with.
void TestProgram::scriptsWriteToTheStreams()
{
    QFETCH(QStringList, options);
    HostFiles files;
    const QString script = files.write(
        "streams.tcl", "puts {out \303\244}\nputs stderr err\nputs -nonewline {the }\nputs rest\nexit 3\nputs never\n");
    const Outcome outcome = runProgram(QStringList{files.project.path()} + options + QStringList{script});
    QCOMPARE(outcome.status, 3);
    QCOMPARE(outcome.output, "out \u00e4\nthe rest\n");
    QCOMPARE(outcome.errors, "err\n");
}

// Also one that the script itself takes.
void TestProgram::snapshotShowsWhatAScriptWrote()
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

ZEL_TEST_MAIN(TestProgram)
#include "tst_program.moc"
