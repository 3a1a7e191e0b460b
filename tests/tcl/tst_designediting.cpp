// SPDX-License-Identifier: MIT
#include "tests/support/rows.h"
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QApplication>
#include <QTimer>

#include <csignal>

#include <sys/resource.h>

using namespace zeltest;

class TestDesignEditing : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void removedJournalIsAnError();
    void linksAreReadAndReplaced();
    void changesThatCannotBeKeptAreRefused();
    void refusalsSayWhy_data();
    void refusalsSayWhy();
    void questionsAreAnswered_data();
    void questionsAreAnswered();
    void changesOfDialogsAreKeptToo();
    void configuringTheSameValueIsNoChange();
};

// What came before it would be lost when the program ends without saving.
void TestDesignEditing::removedJournalIsAnError()
{
    EditedProject project;
    project.run(EachKind[0]);
    const QStringList state = project.state();
    QVERIFY(QFile::remove(project.journalFile()));
    const QString answer = project.run(EachKind[1]);
    QVERIFY2(answer.contains("has been removed; save"), qPrintable(answer));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.run("save"), QString());
    QCOMPARE(project.run(EachKind[1]), QString());
    const QStringList after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
}

// What they lead to is somebody else's.
void TestDesignEditing::linksAreReadAndReplaced()
{
    EditedProject project;
    const QString placement = project.editor().placementFile();
    const QString journal = project.journalFile();
    for (const QString& command : {EachKind[0], QStringLiteral("save"), EachKind[1]})
        QCOMPARE(project.run(command), QString());
    const QStringList state = project.state();
    for (const QString& file : {placement, journal})
        QVERIFY(QFile::rename(file, file + ".outside") && QFile::link(file + ".outside", file));
    const QByteArray saved = contentOf(placement);
    const QByteArray kept = contentOf(journal);
    project.open();
    QCOMPARE(project.state(), state);
    QCOMPARE(project.run(EachKind[2]), QString());
    QVERIFY(!QFileInfo(journal).isSymLink() && QFileInfo(placement).isSymLink());
    QCOMPARE(project.run("save"), QString());
    QVERIFY(!QFileInfo(placement).isSymLink());
    const QStringList after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
    QCOMPARE(contentOf(placement + ".outside"), saved);
    QCOMPARE(contentOf(journal + ".outside"), kept);
}

// The disk is full in the middle of a line.
void TestDesignEditing::changesThatCannotBeKeptAreRefused()
{
    EditedProject project;
    QCOMPARE(project.run(EachKind[0]), QString());
    const QStringList state = project.state();
    const QByteArray journal = project.journal();
    rlimit before{};
    QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{static_cast<rlim_t>(journal.size() + 10), before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    QStringList answers;
    for (const QString& command : {EachKind[2], EachKind[9], EachKind[5], EachKind[6], QStringLiteral("undo")})
        answers.append(project.run(command));
    const bool isUnchanged = project.state() == state && project.journal() == journal;
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    QVERIFY(isUnchanged);
    QVERIFY2(answers.filter("the change cannot be kept in ").size() == 5, qPrintable(answers.join("; ")));
    QCOMPARE(project.run(EachKind[1]), QString()); // there is room again
    const QStringList after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
}

void TestDesignEditing::refusalsSayWhy_data()
{
    addRows({
        {"no such resource", "zel_resource place -rsc nobody -id 11", "there is no resource \"nobody\""},
        {"no number", "zel_resource place -rsc top/core -id x", "expected integer but got \"x\""},
        {"too little", "zel_resource place -rsc top/core",
            "wrong # args: should be \"zel_resource place -rsc NAME -id N\""},
        {"unknown verb", "zel_resource put",
            "unknown subcommand \"put\" of zel_resource: must be configure, get, list, place, remove, reset, "
            "restore, sites, why"},
        {"no key", "zel_resource configure -ip top/duo",
            "wrong # args: should be \"zel_resource configure -ip NAME -key K ?-value V?\""},
        {"no such key", "zel_setting -id 10 -key CH7", "U0 has no setting \"CH7\""},
        {"nothing to undo", "undo", "there is nothing to undo"},
        {"nothing to redo", "redo", "there is nothing to redo"},
        {"too much", "undo 3", "wrong # args: should be \"undo\""},
    });
}

void TestDesignEditing::refusalsSayWhy()
{
    const auto [command, answer] = currentRow<2>();
    EditedProject project;
    const QStringList state = project.state();
    QCOMPARE(project.run(command), "ERROR " + answer);
    QCOMPARE(project.state(), state);
    QVERIFY(project.journal().isEmpty());
}

void TestDesignEditing::questionsAreAnswered_data()
{
    addRows({
        {"some", "zel_resource list top/duo*", "top/duo top/duo/a top/duo/b top/duo/ref"},
        {"those not placed", "zel_resource list -unplaced */b", "top/duo/b"},
        {"a range that never ends", "zel_resource list {*[}", ""},
        {"an awkward name", "lindex [zel_resource list {*/a\\[1\\]$x}] 0", "top/my ip/a[1]$x"},
        {"a site", "dict get [zel_resource get -ip top/duo/a] site", "U0_CH0"},
        {"where it may go", "zel_resource sites -rsc top/core", "50 51"},
        {"nothing against it", "zel_resource why -rsc top/core -id 50", ""},
        {"why not", "zel_resource why -rsc top/core -id 10", "U0 (Unit) does not take resources of type PLL"},
        {"a setting", "zel_setting -id 10 -key CH0", "SLOW"},
        {"a parameter", "zel_resource configure -ip top/duo -key rate", "2.5"},
        {"all parameters", "dict get [zel_resource get -ip top/core] parameters frequency", "100"},
    });
}

void TestDesignEditing::questionsAreAnswered()
{
    const auto [question, answer] = currentRow<2>();
    EditedProject project;
    QCOMPARE(project.run(question), answer);
    QVERIFY(project.journal().isEmpty());
}

// They write through the engine, and not through a command.
void TestDesignEditing::changesOfDialogsAreKeptToo()
{
    EditedProject project;
    QTimer::singleShot(0, &project.editor(), [] {
        QWidget* dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        QTest::keyClicks(dialog->focusWidget(), "75");
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    const std::string name = "top/core";
    QCOMPARE(project.engine().config(&name), 1);
    QVERIFY(project.journal().endsWith("zel_resource configure -ip top/core -key frequency -value 75\n"));
    const std::string site[] = {"10", "CH0", "FAST"};
    QCOMPARE(project.engine().setDynamicDialogValue(&site[0], 1, &site[1], &site[2]), 1);
    QVERIFY(project.journal().endsWith("zel_setting -id 10 -key CH0 -value FAST\n"));
    project.open();
    const QString beforeAndAfterUndo = "list [%1] [undo] [%1]";
    QCOMPARE(project.run(beforeAndAfterUndo.arg("zel_setting -id 10 -key CH0")), "FAST {} SLOW");
    QCOMPARE(project.run(beforeAndAfterUndo.arg("zel_resource configure -ip top/core -key frequency")), "75 {} 100");
}

// Nothing changes, so there is nothing to undo.
void TestDesignEditing::configuringTheSameValueIsNoChange()
{
    EditedProject project;
    QCOMPARE(project.run("zel_resource configure -ip top/duo -key rate -value 2.50"), QString());
    QVERIFY(project.journal().isEmpty());
    QVERIFY(!project.editor().undoStack().canUndo());
}

ZEL_TEST_MAIN(TestDesignEditing)
#include "tst_designediting.moc"
