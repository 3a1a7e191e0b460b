// SPDX-License-Identifier: MIT
#include "tests/program/batchprogram.h"
#include "tests/program/sampleproject.h"
#include "tests/support/testmain.h"

#include <QRandomGenerator>

#include <vector>

#include <sys/resource.h>

namespace {

const QByteArrayList Steps{
    "zel_resource place -rsc gateway/clocks/pll_video -id 5002001", "zel_resource place -rsc gateway/xaui -id 8002000"};

// Prints in one line where everything is and how it is set.
const QByteArray Ask = R"(
proc state {} {
    set facts {}
    foreach name [zel_resource list] {lappend facts [zel_resource get -ip $name]}
    return $facts
}
)";

Outcome run(const QStringList& arguments)
{
    return run(ZELCHIP_PROGRAM, arguments);
}

Outcome runBatch(const SampleProject& project, const QByteArray& script)
{
    return run({project.path(), "--batch", project.write("batch.tcl", script)});
}

// The state that a new program finds.
QByteArray stateOf(const SampleProject& project)
{
    return runBatch(project, Ask + "puts [state]").output.trimmed();
}

} // namespace

// Whatever happens to the program, what it confirmed survives.
class TestRecovery : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // Nothing is recovered here: one program makes all steps.
    void initTestCase()
    {
        const Outcome outcome
            = runBatch(m_project, Ask + "puts [state]\n" + Steps.join("\nputs [state]\n") + "\nputs [state]");
        QCOMPARE(outcome.errors, QByteArray());
        m_states = outcome.output.trimmed().split('\n');
        QVERIFY(m_states.size() == 3 && m_states[0] != m_states[1] && m_states[1] != m_states[2]);
    }

    void init()
    {
        zeltest::Test::init();
        m_project.forgetWork();
    }

    // The program does not ask, for the journal has everything. Both a batch and a script in the window may exit.
    void exitKeepsWhatWasConfirmed()
    {
        const QString script = m_project.write("exit.tcl", Steps[0] + "\nexit 7\n" + Steps[1]);
        for (const char* option : {"--batch", "--script"}) {
            m_project.forgetWork();
            const Outcome outcome = run({m_project.path(), option, script});
            QCOMPARE(outcome.status, 7);
            QCOMPARE(outcome.errors, QByteArray());
            QCOMPARE(stateOf(m_project), m_states[1]);
        }
    }

    // The second program may look at the project, and change it when the first one has ended in whatever way.
    void twoProgramsDoNotChangeOneProject()
    {
        BatchProgram first(m_project.path(), m_project.write("first.tcl", Steps[0] + "\nputs done\ngets stdin"));
        QCOMPARE(first.line(), "done");
        // It does not matter how long the first one has been running.
        QCOMPARE(QProcess::execute("touch", {"-d", "yesterday", m_project.journalFile() + ".lock"}), 0);
        const Outcome second = runBatch(m_project, Ask + "puts [state]\n" + Steps[1]);
        QCOMPARE(second.status, 1);
        QCOMPARE(second.output.trimmed(), m_states[1]);
        const QByteArray program = QFileInfo(ZELCHIP_PROGRAM).fileName().toLocal8Bit();
        QVERIFY2(
            second.errors.contains("is open in another program (" + program + ", process "), second.errors.constData());
        QVERIFY(runBatch(m_project, "zel_project save").errors.contains("is open in another program"));
        const QString script = m_project.write("batch.tcl", Steps[1]);
        QCOMPARE(run({m_project.path(), "--take-over", "--batch", script}).status, 1); // it runs
        first.kill();
        QCOMPARE(runBatch(m_project, Steps[1]).status, 0);
        QCOMPARE(stateOf(m_project), m_states[2]);
    }

    void lockInDoubtIsNamedAndTakenOverKnowingly_data()
    {
        const Rows<QByteArray, QByteArray> row;
        row("empty", "", "it is empty");
        row("noise", QByteArray("\xff\x00\n\n\n x", 7), "it is damaged");
        row("of another machine", "4711\nzelchip\nfarhost\n\n\n", "process 4711 on farhost, since 2");
        row("longer than any lock", QByteArray(5000, '1'), "it is damaged");
    }

    void lockInDoubtIsNamedAndTakenOverKnowingly()
    {
        const auto [lock, reason] = row<QByteArray, QByteArray>();
        QVERIFY(QDir().mkpath(m_project.implementation()));
        m_project.write("project/impl1/journal.tcl.lock", lock);
        const Outcome refused = runBatch(m_project, Steps[0]);
        QCOMPARE(refused.status, 1);
        QVERIFY2(
            refused.errors.contains(reason) && refused.errors.contains("journal.tcl.lock"), refused.errors.constData());
        QCOMPARE(stateOf(m_project), m_states[0]);
        const QString script = m_project.write("batch.tcl", Steps[0]);
        QCOMPARE(run({m_project.path(), "--take-over", "--batch", script}).status, 0);
        QCOMPARE(stateOf(m_project), m_states[1]);
    }

    // The changes that were not saved are there too, each of them a step of undo.
    void projectOfTheReleaseBeforeOpensAsItDid()
    {
        const QString project = m_project.file("earlier");
        QCOMPARE(QProcess::execute("cp", {"-r", ZEL_EARLIER_PROJECT, project}), 0);
        const QString script = m_project.write("state.tcl",
            "foreach name [zel_resource list] {puts [dict remove [zel_resource get -ip $name] locked]}\n"
            "foreach key {CH0 CH1} {puts [zel_setting -id 10 -key $key]}\n");
        const QByteArray state = zeltest::contentOf(project + "/state.txt");
        QVERIFY(!state.isEmpty());
        const Outcome opened = run({project, "--batch", script});
        QCOMPARE(opened.output, state);
        QCOMPARE(opened.errors, QByteArray("zelchip: 10 changes that were not saved are back.\n"));
        const QString undoing
            = m_project.write("undo.tcl", "while {![catch undo]} {incr n}\nputs $n\nzel_project save");
        QCOMPARE(run({project, "--batch", undoing}).output, QByteArray("10\n"));
        QCOMPARE(run({project, "--batch", script}).errors, QByteArray());
    }

    // The program tells of the first lines only, and keeps everything.
    void hugeJournalOfSomethingElseIsReadQuickly()
    {
        constexpr int Size = 100'000'000;
        QCOMPARE(runBatch(m_project, Steps[0]).status, 0);
        const qint64 before = QFileInfo(m_project.journalFile()).size();
        QFile journal(m_project.journalFile());
        QVERIFY(journal.open(QIODevice::Append));
        QRandomGenerator random(1); // the same every time
        std::vector<quint32> block(Size / 400);
        for (int i = 0; i < 100; ++i) {
            random.fillRange(block.data(), Size / 400);
            QCOMPARE(journal.write(reinterpret_cast<const char*>(block.data()), Size / 100), qint64(Size / 100));
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

    void changeThatCannotBeKeptIsAnError_data()
    {
        // The obstacle: commands of the shell, in the project's folder.
        const Rows<QString, QString> row;
        row("the implementation's folder is a file", "touch impl1", "Not a directory");
        row("the journal is a folder", "mkdir -p impl1/journal.tcl", "it is a folder");
        row("the journal is a pipe", "mkdir impl1 && mkfifo impl1/journal.tcl", "it is a pipe");
        row("the journal leads to a device", "mkdir impl1 && ln -s /dev/full impl1/journal.tcl", "it is a device");
        row("no file may be so large", "ulimit -f 0", "File too large");
    }

    void changeThatCannotBeKeptIsAnError()
    {
        const auto [obstacle, reason] = row<QString, QString>();
        QCOMPARE(QProcess::execute("sh", {"-c", "cd \"$1\" && " + obstacle, "sh", m_project.path()}), 0);
        const QString limit = obstacle.startsWith("ulimit") ? obstacle : "true";
        const auto runLimited = [this, &limit](const QByteArray& script) {
            return run("sh",
                {"-c", limit + " && exec \"$@\"", "sh", ZELCHIP_PROGRAM, m_project.path(), "--batch",
                    m_project.write("batch.tcl", script)});
        };
        const Outcome refused = runLimited("puts before\n" + Steps[0] + "\nputs after");
        QCOMPARE(refused.status, 1);
        QCOMPARE(refused.output, QByteArray("before\n"));
        QVERIFY2(refused.errors.contains("batch.tcl:2: the "), refused.errors.constData());
        QVERIFY2(refused.errors.contains(reason.toUtf8()), refused.errors.constData());
        // A change that is not kept is not made either.
        const Outcome unchanged = runLimited(Ask + "catch {" + Steps[0] + "}\nputs [state]");
        QCOMPARE(unchanged.output.trimmed(), m_states[0]);
    }

    void errorsHaveAPlace_data()
    {
        // %1: the script's file
        const Rows<QString, QString, QString> row;
        row("a command refuses", "puts a\n\nzel_resource place -rsc gateway/clocks/pll_video -id 7\n",
            "%1:3: there is no site 7", "");
        row("no such command", "zel_nothing", "%1:1: invalid command name \"zel_nothing\"", "");
        row("in a procedure", "proc p {} {\n error oops\n}\n\np", "%1:5: oops", "");
        row("a brace is missing", "puts a\nforeach x {1 2} {", "%1:2: missing close-brace", "");
        row("in another file", "\nsource [file join [file dirname [info script]] inner.tcl]", "%1:2: inside", "");
        row("no window in a batch", "zel_view fit", "%1:1: zel_view: this run has no window", "");
        // Tcl tells only the beginning of such a name.
        row("in a file with a long name", "\nzel_nothing", "%1:2: invalid command name \"zel_nothing\"", "long");
    }

    void errorsHaveAPlace()
    {
        const auto [script, error, length] = row<QString, QString, QString>();
        m_project.write("inner.tcl", "\n\n\nerror inside");
        const QString file = m_project.write(QString(length.isEmpty() ? 5 : 200, 'n') + ".tcl", script.toUtf8());
        const Outcome outcome = run({m_project.path(), "--batch", file});
        QCOMPARE(outcome.status, 1);
        QCOMPARE(QString::fromUtf8(outcome.errors), "zelchip: " + error.arg(file) + '\n');
    }

    // The window shows how far the script came. No snapshot of that is made.
    void windowStaysAfterAnErrorInItsScript()
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

private:
    SampleProject m_project;
    QByteArrayList m_states; // after so many steps
};

ZEL_TEST_MAIN(TestRecovery)
#include "tst_recovery.moc"
