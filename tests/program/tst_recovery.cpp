// SPDX-License-Identifier: MIT
#include "tests/program/sampleproject.h"
#include "tests/support/testmain.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>
#include <QtEndian>

#include <random>

#include <sys/resource.h>

namespace {

// Each makes the next one possible or changes what it changed.
const QByteArrayList Steps{"zel_resource place -rsc gateway/clocks/pll_video -id 5002001",
    "zel_resource place -rsc gateway/xaui -id 8002000", "zel_setting -id 8002000 -key CH0 -value {EXTREF B}",
    "zel_resource place -rsc gateway/supplies/vccio_lvds -id 4007001", "zel_resource reset -ip gateway/pcie/lane1",
    "undo", "zel_resource configure -ip gateway/clocks/pll_video -key frequency -value 75",
    "zel_resource remove -ip gateway/xaui", "undo", "redo", "zel_resource remove -ip gateway/supplies", "undo",
    "zel_resource reset -ip gateway/clocks/pll_video", "zel_setting -id 8000000 -key CH1 -value {CORE CLOCK}", "undo",
    "zel_resource place -rsc gateway/clocks/pll_video -id 5004002"};

// Prints what is where and set how, in one line.
const QByteArray Ask = R"(
proc state {} {
    set facts {}
    foreach name [zel_resource list] {lappend facts [zel_resource get -ip $name]}
    foreach id {8000000 8002000} {
        foreach key {CH0 CH1} {lappend facts [zel_setting -id $id -key $key]}
    }
    return $facts
}
)";

struct Outcome
{
    int status = -1; // of a run that did not come to its own end
    QByteArray output;
    QByteArray errors;
};

Outcome run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    Outcome outcome;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        outcome.status = process.exitCode();
    outcome.output = process.readAllStandardOutput();
    outcome.errors = process.readAllStandardError();
    return outcome;
}

Outcome run(const QStringList& arguments)
{
    return run(ZELCHIP_PROGRAM, arguments);
}

Outcome runBatch(const SampleProject& project, const QByteArray& script)
{
    return run({project.path(), "--batch", project.write("batch.tcl", script)});
}

// As a new program finds it.
QByteArray stateOf(const SampleProject& project)
{
    return runBatch(project, Ask + "puts [state]").output.trimmed();
}

// The script that makes the steps and says after each that it is made.
QByteArray confirming(const QByteArray& afterEach)
{
    QByteArray script = Ask;
    for (const QByteArray& step : Steps)
        script += step + "\nputs done\n" + afterEach + '\n';
    return script;
}

// A program in the middle of its work, which ends without a chance to do anything about it.
class Victim
{
public:
    Victim(const SampleProject& project, const QByteArray& script)
    {
        m_process.start(ZELCHIP_PROGRAM, {project.path(), "--batch", project.write("victim.tcl", script)});
    }

    bool waitForLine()
    {
        while (!m_process.canReadLine()) {
            if (!m_process.waitForReadyRead())
                return false;
        }
        m_output += m_process.readLine();
        return true;
    }

    void goOn() { m_process.write("\n"); }

    [[nodiscard]] const QByteArray& output() const { return m_output; }

    // The number of steps it had confirmed.
    int kill()
    {
        m_process.kill(); // SIGKILL
        m_process.waitForFinished();
        m_output += m_process.readAllStandardOutput();
        return static_cast<int>(m_output.count("done\n"));
    }

private:
    QProcess m_process;
    QByteArray m_output;
};

// As a file is cut off by a machine that lost its power.
void cut(const QString& fileName, qint64 size)
{
    if (!QFile::resize(fileName, size))
        qFatal("cannot cut %s", qPrintable(fileName));
}

} // namespace

// What was confirmed survives whatever happens to the program.
class TestRecovery : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void exitKeepsWhatWasConfirmed_data();
    void exitKeepsWhatWasConfirmed();
    void lastStepIsCutOff_data();
    void lastStepIsCutOff();
    void twoProgramsDoNotChangeOneProject();
    void lockInDoubtIsNamedAndTakenOverKnowingly_data();
    void lockInDoubtIsNamedAndTakenOverKnowingly();
    void whatTheReleaseBeforeWroteOpensAsItDid();
    void hugeJournalOfSomethingElseIsReadQuickly();
    void changesOfAnotherProgramAreNotPassedOver_data();
    void changesOfAnotherProgramAreNotPassedOver();
    void changeThatCannotBeKeptIsAnError_data();
    void changeThatCannotBeKeptIsAnError();
    void errorsHaveAPlace_data();
    void errorsHaveAPlace();
    void errorsHaveAPlaceInAFileWithALongName();
    void windowStaysAfterAnErrorInItsScript();

private:
    SampleProject m_project;
    QByteArrayList m_states; // after so many steps
};

// Without any recovering: one program makes all steps.
void TestRecovery::initTestCase()
{
    const Outcome outcome = runBatch(m_project, Ask + "puts [state]\n" + confirming("puts [state]"));
    QCOMPARE(outcome.errors, QByteArray());
    m_states = outcome.output.trimmed().split('\n');
    m_states.removeAll("done");
    QCOMPARE(m_states.size(), Steps.size() + 1);
    for (int i = 0; i < Steps.size(); ++i)
        QVERIFY2(m_states[i] != m_states[i + 1], Steps[i].constData());
}

void TestRecovery::init()
{
    zeltest::Test::init();
    m_project.forgetWork();
}

void TestRecovery::exitKeepsWhatWasConfirmed_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("of a batch") << "--batch";
    QTest::newRow("of a script in the window") << "--script";
}

// Without asking: the journal has it.
void TestRecovery::exitKeepsWhatWasConfirmed()
{
    QFETCH(QString, option);
    const QString script = m_project.write("exit.tcl", Steps[0] + "\nexit 7\n" + Steps[1]);
    const Outcome outcome = run({m_project.path(), option, script});
    QCOMPARE(outcome.status, 7);
    QCOMPARE(outcome.errors, QByteArray());
    QCOMPARE(stateOf(m_project), m_states[1]);
}

// What a power cut leaves of the last step is dropped, be it one line in the journal or several.
void TestRecovery::lastStepIsCutOff_data()
{
    QTest::addColumn<int>("steps");
    for (int steps = 1; steps <= Steps.size(); ++steps)
        QTest::addRow("%d: %s", steps, Steps[steps - 1].constData()) << steps;
}

void TestRecovery::lastStepIsCutOff()
{
    QFETCH(int, steps);
    const QByteArray script = Steps.mid(0, steps).join('\n');
    QCOMPARE(runBatch(m_project, script).status, 0);
    cut(m_project.journalFile(), QFileInfo(m_project.journalFile()).size() - 3);
    const Outcome outcome = runBatch(m_project, Ask + "puts [state]");
    QCOMPARE(outcome.status, 0);
    QVERIFY2(outcome.errors.contains("The last line of " + QFile::encodeName(m_project.journalFile()) + " was cut off"),
        outcome.errors.constData());
    QCOMPARE(outcome.output.trimmed(), m_states[steps - 1]);
}

// Looking at it is allowed, and when the first one has ended, in whatever way, the next one may change it.
void TestRecovery::twoProgramsDoNotChangeOneProject()
{
    Victim first(m_project, Steps[0] + "\nputs done\ngets stdin");
    QVERIFY(first.waitForLine());
    // However long it has been running.
    QCOMPARE(QProcess::execute("touch", {"-d", "yesterday", m_project.journalFile() + ".lock"}), 0);
    const Outcome second = runBatch(m_project, Ask + "puts [state]\n" + Steps[1]);
    QCOMPARE(second.status, 1);
    QCOMPARE(second.output.trimmed(), m_states[1]);
    const QByteArray program = QFileInfo(ZELCHIP_PROGRAM).fileName().toLocal8Bit();
    QVERIFY2(second.errors.contains("is being changed by another program (" + program + ", process "),
        second.errors.constData());
    QVERIFY(runBatch(m_project, "zel_project save").errors.contains("is being changed by another program"));
    const QString script = m_project.write("batch.tcl", Steps[1]);
    QCOMPARE(run({m_project.path(), "--take-over", "--batch", script}).status, 1); // it runs
    QCOMPARE(first.kill(), 1);
    QCOMPARE(runBatch(m_project, Steps[1]).status, 0);
    QCOMPARE(stateOf(m_project), m_states[2]);
}

void TestRecovery::lockInDoubtIsNamedAndTakenOverKnowingly_data()
{
    QTest::addColumn<QByteArray>("lock"); // empty: a program that runs
    QTest::addColumn<QByteArray>("reason");
    QTest::addColumn<bool>("canBeTakenOver");
    QTest::newRow("empty") << QByteArray("") << QByteArray("it is empty") << true;
    QTest::newRow("noise") << QByteArray("\xff\x00\n\n\n x", 7) << QByteArray("it is damaged") << true;
    QTest::newRow("of another machine") << QByteArray("4711\nzelchip\nfarhost\n\n\n")
                                        << QByteArray("process 4711 on farhost, since 2") << true;
    QTest::newRow("longer than any lock") << QByteArray(5000, '1') << QByteArray("it is damaged") << true;
}

void TestRecovery::lockInDoubtIsNamedAndTakenOverKnowingly()
{
    QFETCH(QByteArray, lock);
    QFETCH(QByteArray, reason);
    QFETCH(bool, canBeTakenOver);
    QVERIFY(QDir().mkpath(m_project.implementation()));
    m_project.write("project/impl1/journal.tcl.lock", lock);
    const Outcome refused = runBatch(m_project, Steps[0]);
    QCOMPARE(refused.status, 1);
    QVERIFY2(
        refused.errors.contains(reason) && refused.errors.contains("journal.tcl.lock"), refused.errors.constData());
    QCOMPARE(stateOf(m_project), m_states[0]);
    const QString script = m_project.write("batch.tcl", Steps[0]);
    const Outcome taken = run({m_project.path(), "--take-over", "--batch", script});
    QCOMPARE(taken.status, canBeTakenOver ? 0 : 1);
    QCOMPARE(stateOf(m_project), m_states[canBeTakenOver ? 1 : 0]);
}

// With the changes that it did not save, each one step of undo.
void TestRecovery::whatTheReleaseBeforeWroteOpensAsItDid()
{
    const QString project = m_project.file("earlier");
    QCOMPARE(QProcess::execute("cp", {"-r", ZEL_EARLIER_PROJECT, project}), 0);
    const QString script = m_project.write("state.tcl",
        "foreach name [zel_resource list] {puts [zel_resource get -ip $name]}\n"
        "foreach key {CH0 CH1} {puts [zel_setting -id 10 -key $key]}\n");
    const QByteArray state = contentOf(project + "/state.txt");
    QVERIFY(!state.isEmpty());
    const Outcome opened = run({project, "--batch", script});
    QCOMPARE(opened.output, state);
    QCOMPARE(opened.errors, QByteArray("zelchip: 10 changes that were not saved are back.\n"));
    const QString undoing = m_project.write("undo.tcl", "while {![catch undo]} {incr n}\nputs $n\nzel_project save");
    QCOMPARE(run({project, "--batch", undoing}).output, QByteArray("10\n"));
    QCOMPARE(run({project, "--batch", script}).errors, QByteArray());
}

// Of which the first lines are told, and all is kept.
void TestRecovery::hugeJournalOfSomethingElseIsReadQuickly()
{
    constexpr int Size = 100'000'000;
    QCOMPARE(runBatch(m_project, Steps[0]).status, 0);
    const qint64 before = QFileInfo(m_project.journalFile()).size();
    QFile journal(m_project.journalFile());
    QVERIFY(journal.open(QIODevice::Append));
    std::mt19937 random(1); // the same everywhere
    QByteArray block(Size / 100, Qt::Uninitialized);
    for (int i = 0; i < 100; ++i) {
        for (int at = 0; at + 4 <= block.size(); at += 4)
            qToLittleEndian(static_cast<quint32>(random()), block.data() + at);
        QCOMPARE(journal.write(block), block.size());
    }
    journal.close();
    const Outcome outcome = runBatch(m_project, Ask + "puts [state]");
#ifndef __SANITIZE_ADDRESS__
    struct rusage usage;
    QCOMPARE(getrusage(RUSAGE_CHILDREN, &usage), 0);
    QVERIFY2(usage.ru_maxrss < 200'000, qPrintable(QString::number(usage.ru_maxrss))); // kilobytes
#endif
    QCOMPARE(outcome.output.trimmed(), m_states[1]);
    QCOMPARE(outcome.errors.count("refused "), 21);
    QCOMPARE(QFileInfo(m_project.journalFile() + ".aside-1").size(), before + Size);
    QCOMPARE(QFileInfo(m_project.journalFile()).size(), before);
}

void TestRecovery::changesOfAnotherProgramAreNotPassedOver_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::newRow("in the journal") << Steps[0];
    QTest::newRow("saved") << Steps[0] + "\nzel_project save";
}

void TestRecovery::changesOfAnotherProgramAreNotPassedOver()
{
    QFETCH(QByteArray, change);
    Victim first(m_project,
        "puts open\ngets stdin\ncatch {" + Steps[3] + "} why\nputs $why\ncatch {zel_project save} why\nputs $why");
    QVERIFY(first.waitForLine());
    QCOMPARE(runBatch(m_project, change).status, 0);
    first.goOn();
    QVERIFY(first.waitForLine() && first.waitForLine());
    first.kill();
    QCOMPARE(first.output().count("another program has changed the project; open it again\n"), 2);
    QCOMPARE(stateOf(m_project), m_states[1]);
}

void TestRecovery::changeThatCannotBeKeptIsAnError_data()
{
    QTest::addColumn<QString>("obstacle"); // a command of the shell, in the project's folder
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("the implementation's folder is a file") << "touch impl1" << QByteArray("Not a directory");
    QTest::newRow("the journal is a folder") << "mkdir -p impl1/journal.tcl" << QByteArray("it is a folder");
    QTest::newRow("the journal is a pipe") << "mkdir impl1 && mkfifo impl1/journal.tcl" << QByteArray("it is a pipe");
    QTest::newRow("the journal leads to a device")
        << "mkdir impl1 && ln -s /dev/full impl1/journal.tcl" << QByteArray("it is a device");
    QTest::newRow("no file may be so large") << "ulimit -f 0" << QByteArray("File too large");
}

void TestRecovery::changeThatCannotBeKeptIsAnError()
{
    QFETCH(QString, obstacle);
    QFETCH(QByteArray, reason);
    QCOMPARE(QProcess::execute("sh", {"-c", "cd \"$1\" && " + obstacle, "sh", m_project.path()}), 0);
    const auto runLimited = [&](const QByteArray& script) {
        const QString limit = obstacle.startsWith("ulimit") ? obstacle : QStringLiteral("true");
        return run("sh",
            {"-c", limit + " && exec \"$@\"", "sh", ZELCHIP_PROGRAM, m_project.path(), "--batch",
                m_project.write("batch.tcl", script)});
    };
    const Outcome refused = runLimited("puts before\n" + Steps[0] + "\nputs after");
    QCOMPARE(refused.status, 1);
    QCOMPARE(refused.output, QByteArray("before\n"));
    QVERIFY2(refused.errors.contains("batch.tcl:2: the "), refused.errors.constData());
    QVERIFY2(refused.errors.contains(reason), refused.errors.constData());
    // Nor is it made where it is not kept.
    const Outcome unchanged = runLimited(Ask + "catch {" + Steps[0] + "}\nputs [state]");
    QCOMPARE(unchanged.output.trimmed(), m_states[0]);
}

void TestRecovery::errorsHaveAPlace_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QString>("error"); // %1: the script's file
    QTest::newRow("a command refuses") << QByteArray(
        "puts a\n\nzel_resource place -rsc gateway/clocks/pll_video -id 7\n")
                                       << "%1:3: there is no site 7";
    QTest::newRow("no such command") << QByteArray("zel_nothing") << "%1:1: invalid command name \"zel_nothing\"";
    QTest::newRow("in a procedure") << QByteArray("proc p {} {\n error oops\n}\n\np") << "%1:5: oops";
    QTest::newRow("a brace is missing") << QByteArray("puts a\nforeach x {1 2} {") << "%1:2: missing close-brace";
    QTest::newRow("in another file") << QByteArray("\nsource [file join [file dirname [info script]] inner.tcl]")
                                     << "%1:2: inside";
    QTest::newRow("no window in a batch") << QByteArray("zel_view fit") << "%1:1: zel_view: this run has no window";
}

void TestRecovery::errorsHaveAPlace()
{
    QFETCH(QByteArray, script);
    QFETCH(QString, error);
    m_project.write("inner.tcl", "\n\n\nerror inside");
    const Outcome outcome = runBatch(m_project, script);
    QCOMPARE(outcome.status, 1);
    QCOMPARE(QString::fromUtf8(outcome.errors),
        QStringLiteral("zelchip: ") + error.arg(m_project.file("batch.tcl")) + QLatin1Char('\n'));
}

// Tcl tells only the beginning of it.
void TestRecovery::errorsHaveAPlaceInAFileWithALongName()
{
    const QString folder = m_project.file(QString(200, QLatin1Char('n')));
    QVERIFY(QDir().mkpath(folder));
    QFile script(folder + "/script.tcl");
    QVERIFY(script.open(QIODevice::WriteOnly) && script.write("\nzel_nothing\n") > 0);
    script.close();
    const Outcome outcome = run({m_project.path(), "--batch", script.fileName()});
    QVERIFY2(outcome.errors.contains("/script.tcl:2: invalid command name"), outcome.errors.constData());
}

// One sees how far it came. A snapshot of it is not made.
void TestRecovery::windowStaysAfterAnErrorInItsScript()
{
    const QString script = m_project.write("bad.tcl", Steps[0] + "\nzel_nothing\n");
    const QByteArray error = "zelchip: " + script.toUtf8() + ":2: invalid command name \"zel_nothing\"\n";
    QProcess window;
    window.start(ZELCHIP_PROGRAM, {m_project.path(), "--script", script});
    window.setReadChannel(QProcess::StandardError);
    while (!window.canReadLine())
        QVERIFY(window.waitForReadyRead());
    QCOMPARE(window.readLine(), error);
    QVERIFY(!window.waitForFinished(500));
    window.kill();
    window.waitForFinished();

    m_project.forgetWork();
    const QString picture = m_project.file("never.png");
    const Outcome outcome = run({m_project.path(), "--script", script, "--snapshot", picture});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.errors, error);
    QVERIFY(!QFile::exists(picture));
}

ZEL_TEST_MAIN(TestRecovery)
#include "tst_recovery.moc"
