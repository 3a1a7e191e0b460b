// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace zeltest;

class TestDesignRecovery : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesBackAfterACrash();
    void savedStateIsWhereOneStarts();
    void journalThatWasSavedIsNotMadeAgain();
    void journalOfAnotherHandIsRead();
    void whatIsNotReadIsKeptBeforeASave();
    void changesBySomebodyElseAreNotOverwritten();
    void placementsThatAreRefusedAreKept();
    void journalOfAnotherStateIsSetAside();
    void tornLineIsDroppedAndSaid_data();
    void tornLineIsDroppedAndSaid();
    void foreignCommandsAreRefusedAndKept_data();
    void foreignCommandsAreRefusedAndKept();
    void changeOfSeveralCommandsComesBackWholeOrNot_data();
    void changeOfSeveralCommandsComesBackWholeOrNot();
    void fileThatIsNoJournalIsSaidInAFewLines();
    void damagedLineCostsNoneOfTheOthers();
};

// The program may end between any two commands; the journal is all that is left. It is the undo history as well.
void TestDesignRecovery::everyStateComesBackAfterACrash()
{
    EditedProject project;
    QList<QStringList> states;
    for (const QString& command : EachKind) {
        states.append(project.state());
        QCOMPARE(project.run(command), QString());
        const QStringList state = project.state();
        const auto commands = project.journal().count('\n');
        QCOMPARE(project.open().size(), 1); // "n changes are back"
        QCOMPARE(project.state(), state);
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.journal().count('\n'), commands);
    }
    const QStringList last = project.state();
    while (!states.isEmpty()) {
        QCOMPARE(project.run("undo"), QString());
        QCOMPARE(project.state(), states.takeLast());
    }
    QVERIFY(!project.editor().undoStack().canUndo());
    while (project.editor().undoStack().canRedo())
        QCOMPARE(project.run("redo"), QString());
    QCOMPARE(project.state(), last);
}

// Without a journal, and undoing past it is a change.
void TestDesignRecovery::savedStateIsWhereOneStarts()
{
    EditedProject project;
    QList<QStringList> states;
    for (const QString& command : EachKind) {
        states.append(project.state());
        project.run(command);
    }
    const QStringList state = project.state();
    QSignalSpy changes(&project.editor(), &DesignEditor::changed);
    QCOMPARE(project.run("save"), QString());
    QCOMPARE(changes.size(), 1);
    QVERIFY(!project.editor().isModified());
    QVERIFY(project.journal().isEmpty());
    for (int i = states.size() - 1; i >= 0; --i) {
        QCOMPARE(project.run("undo"), QString());
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.state(), states[i]);
    }
    project.open();
    QCOMPARE(project.state(), states.first());
    project.setJournal({});
    QCOMPARE(project.open(), QStringList());
    QCOMPARE(project.state(), state);
    QVERIFY(!project.editor().isModified());
}

// As when the program ends between writing the placements and emptying the journal, and when it went on after that
// because the journal could not be emptied.
void TestDesignRecovery::journalThatWasSavedIsNotMadeAgain()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QByteArray journal = project.journal();
    const QStringList state = project.state();
    QCOMPARE(project.run("save"), QString());
    project.setJournal(journal);
    QCOMPARE(project.open(), QStringList());
    QCOMPARE(project.state(), state);
    QVERIFY(!project.editor().isModified());

    project.setJournal(journal + "zel_setting -id 10 -key CH1 -value SLOW\n");
    QCOMPARE(project.open(), QStringList("1 change that was not saved is back."));
    QVERIFY(project.editor().isModified());
    QCOMPARE(project.run("undo"), QString());
    QCOMPARE(project.state(), state);
    project.open();
    QCOMPARE(project.state(), state);
    QVERIFY(!QFile::exists(project.journalFile() + ".aside-1"));
}

// Line ends of another system, no first line, and both.
void TestDesignRecovery::journalOfAnotherHandIsRead()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QByteArray written = project.journal();
    const QStringList state = project.state();
    for (QByteArray journal : {written, written.mid(written.indexOf('\n') + 1)}) {
        project.setJournal(journal.replace("\n", "\r\n"));
        QCOMPARE(project.open().size(), 1);
        QCOMPARE(project.state(), state);
    }
    const QByteArray unnamed = project.journal();
    QCOMPARE(project.run("save"), QString());
    project.setJournal(unnamed); // as if the program had ended before it emptied it
    QCOMPARE(project.open(), QStringList());
    QCOMPARE(project.state(), state);
}

// When it could not be set aside at first because somebody else had the project.
void TestDesignRecovery::whatIsNotReadIsKeptBeforeASave()
{
    EditedProject project;
    project.run(EachKind[0]);
    const QByteArray journal = project.journal() + "zel_resource place -rsc top/precious -id 50\n";
    project.open(); // gives its lock back
    project.setJournal(journal);
    write(project.journalFile() + ".lock", "1\nzelchip\nfarhost\n");
    const QString said = project.open().join('\n');
    QVERIFY2(said.contains("No change is accepted"), qPrintable(said));
    QVERIFY(project.run(EachKind[1]).contains("farhost"));
    QVERIFY(QFile::remove(project.journalFile() + ".lock"));
    QCOMPARE(project.run("save"), QString());
    QCOMPARE(contentOf(project.journalFile() + ".aside-1"), journal);
    QCOMPARE(project.run(EachKind[1]), QString());
}

// By other means than a program that asks for the lock; also where the size stays the same.
void TestDesignRecovery::changesBySomebodyElseAreNotOverwritten()
{
    EditedProject project;
    for (const QString& command : {EachKind[0], QStringLiteral("save"), EachKind[1]})
        QCOMPARE(project.run(command), QString());
    const QByteArray journal = project.journal();
    project.open();
    project.setJournal(QByteArray(journal).replace("-id 20", "-id 30"));
    QVERIFY(project.run(EachKind[2]).contains("another program has changed"));
    QVERIFY(project.run("save").contains("another program has changed"));
    project.setJournal(journal);
    project.open();
    QCOMPARE(project.run(EachKind[2]), QString());
    const QByteArray saved = contentOf(project.editor().placementFile()).replace("-id 12", "-id 11");
    write(project.editor().placementFile(), saved);
    QVERIFY(project.run("save").contains("another program has changed"));
    QCOMPARE(contentOf(project.editor().placementFile()), saved);
}

// So is what the placement file holds and the design does not know any more.
void TestDesignRecovery::placementsThatAreRefusedAreKept()
{
    EditedProject project;
    for (const QString& command : {EachKind[0], QStringLiteral("save")})
        QCOMPARE(project.run(command), QString());
    const QByteArray saved = contentOf(project.editor().placementFile()) + "zel_resource reset -ip top/nobody\n";
    write(project.editor().placementFile(), saved);
    QCOMPARE(project.open().last(), "The next save keeps the file as it is under another name.");
    QCOMPARE(project.run("save"), QString());
    QCOMPARE(contentOf(project.editor().placementFile() + ".aside-1"), saved);
}

void TestDesignRecovery::journalOfAnotherStateIsSetAside()
{
    EditedProject project;
    project.run(EachKind[0]);
    const QByteArray journal = project.journal();
    QCOMPARE(project.run("save"), QString());
    const QStringList state = project.state();
    project.setJournal(journal.left(journal.size() - 2) + "1\n"); // not what was saved, at another place
    QCOMPARE(project.open().size(), 1);
    QCOMPARE(project.state(), state);
    QVERIFY(QFile::exists(project.journalFile() + ".aside-1"));
    QVERIFY(!project.editor().isModified());
}

void TestDesignRecovery::tornLineIsDroppedAndSaid_data()
{
    const QByteArray place = "zel_resource place -rsc top/core -id 51";
    QTest::addColumn<QByteArray>("end");
    QTest::addColumn<bool>("isGroup"); // several commands, not all of which are there
    QTest::newRow("half a command") << place.left(16) << false;
    QTest::newRow("a whole one without its line end") << place << false;
    QTest::newRow("half a comment") << QByteArray("# toget") << false;
    QTest::newRow("not all of what counts together") << "# together 2\n" + place + '\n' << true;
    QTest::newRow("nothing of what counts together") << QByteArray("# together 2\n") << true;
    QTest::newRow("half of the second of two") << "# together 2\n" + place + "\nzel_resou" << false;
    QTest::newRow("zeros, as after a power cut") << QByteArray(17, '\0') << false;
}

void TestDesignRecovery::tornLineIsDroppedAndSaid()
{
    QFETCH(QByteArray, end);
    QFETCH(bool, isGroup);
    EditedProject project;
    project.run(EachKind[0]);
    const QStringList state = project.state();
    const QByteArray whole = project.journal();
    project.setJournal(whole + end);
    const QStringList said = project.open();
    QCOMPARE(said.size(), 3);
    const QString& file = project.journalFile();
    QVERIFY(said.first().startsWith(isGroup ? file + ":3: the last change was cut off" : "The last line of " + file));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), whole);
    QCOMPARE(project.run(EachKind[1]), QString()); // what follows is whole again
    project.open();
    QVERIFY(project.journal().startsWith(whole));
}

void TestDesignRecovery::foreignCommandsAreRefusedAndKept_data()
{
    QTest::addColumn<QByteArray>("command");
    const auto row = [](const char* name, const QByteArray& command) { QTest::newRow(name) << command; };
    row("a command of Tcl", "exec touch /tmp/never");
    row("one inside another", "zel_resource reset -ip [exit]");
    row("a question", "zel_resource list");
    row("reading a parameter", "zel_resource configure -ip top/core -key frequency");
    row("a parameter out of its bounds", "zel_resource configure -ip top/core -key frequency -value 1");
    row("reading a setting", "zel_setting -id 10 -key CH0");
    row("a placement that the rules refuse", "zel_resource place -rsc top/core -id 10");
    row("undo", "undo");
    row("an open brace", "zel_resource place -rsc {top/core");
    row("brackets in brackets", "zel_setting -id " + QByteArray(50'000, '['));
    row("two commands in a line", "zel_resource reset -ip top/duo; undo");
    row("a value of the environment", "zel_resource reset -ip $env(HOME)");
    row("a line longer than any command", "zel_resource reset -ip " + QByteArray(2 << 20, 'x'));
    row("something behind a zero", QByteArray("zel_resource reset -ip top/duo\0x", 33));
    row("noise", "\xff\xfe\x01 } {");
}

void TestDesignRecovery::foreignCommandsAreRefusedAndKept()
{
    QFETCH(QByteArray, command);
    EditedProject project;
    for (const QString& good : {EachKind[0], EachKind[1], QStringLiteral("undo")}) // which takes several commands
        QCOMPARE(project.run(good), QString());
    const QStringList state = project.state();
    const QByteArray good = project.journal();
    QVERIFY(good.contains("\n# together "));
    const auto secondCommand = static_cast<int>(good.indexOf('\n', good.indexOf('\n') + 1)) + 1;
    const QByteArray bad = good.left(secondCommand) + command + '\n' + good.mid(secondCommand);
    project.setJournal(bad);
    const QString said = project.open().join('\n');
    QVERIFY2(said.contains(project.journalFile() + ":3: refused "), qPrintable(said));
    QCOMPARE(contentOf(project.journalFile() + ".aside-1"), bad);
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), good);
}

// Nor can it be done again.
void TestDesignRecovery::changeOfSeveralCommandsComesBackWholeOrNot_data()
{
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("its second command is refused") << QByteArray("zel_resource place -rsc top/core -id 10\n");
    QTest::newRow("its second command is missing") << QByteArray("# together 0\n");
}

void TestDesignRecovery::changeOfSeveralCommandsComesBackWholeOrNot()
{
    QFETCH(QByteArray, second);
    EditedProject project;
    project.run(EachKind[0]);
    const QStringList state = project.state();
    const QByteArray journal = project.journal();
    project.setJournal(journal + "# together 2\nzel_resource place -rsc top/core -id 51\n" + second);
    const QString said = project.open().join('\n');
    QVERIFY2(said.contains(":3: refused zel_resource place -rsc top/core"), qPrintable(said));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), journal);
    QVERIFY(!project.editor().undoStack().canRedo());
}

// A person can read what is said of it.
void TestDesignRecovery::fileThatIsNoJournalIsSaidInAFewLines()
{
    EditedProject project;
    project.run(EachKind[0]); // there is a journal
    project.run("undo");
    const QStringList state = project.state();
    const QByteArray noise = QByteArray("\x1b[31m\x07" + QByteArray(5000, '\xfe') + '\n').repeated(300) + "end\n";
    project.setJournal(noise);
    const QStringList said = project.open();
    QVERIFY2(said.size() < 30, qPrintable(QString::number(said.size())));
    for (const QString& line : said) {
        QVERIFY(line.size() < 600);
        QVERIFY(std::all_of(line.begin(), line.end(), [](QChar character) { return character.isPrint(); }));
    }
    QVERIFY(said.contains(project.journalFile() + ": refused 281 more"));
    QCOMPARE(contentOf(project.journalFile() + ".aside-1"), noise);
    QCOMPARE(project.state(), state);
}

void TestDesignRecovery::damagedLineCostsNoneOfTheOthers()
{
    constexpr int Lines = 20000;
    EditedProject project;
    project.run(EachKind[0]);
    QByteArray journal = project.journal() + "zel_resource place -rsc {top/co\n";
    for (int i = 0; i < Lines; ++i)
        journal += i % 2 == 0 ? "zel_resource place -rsc top/core -id 50\n" : "zel_resource reset -ip top/core\n";
    project.setJournal(journal + "zel_resource place -rsc top/core -id 51\n");
    QVERIFY(project.open().last().startsWith(QString::number(Lines + 2)));
    QVERIFY(project.state().contains("top/core@51,100"));
}

ZEL_TEST_MAIN(TestDesignRecovery)
#include "tst_designrecovery.moc"
