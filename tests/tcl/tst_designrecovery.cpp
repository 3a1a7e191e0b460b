// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QFile>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>
#include <utility>

using namespace mirn::zelchip;
using zeltest::contentOf;
using zeltest::EachKind;
using zeltest::EditedProject;

class TestDesignRecovery : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void everyStateComesBackAfterACrash();
    void savedStateComesBackWithoutAJournal();
    void undoingPastASaveComesBackToo();
    void journalThatWasSavedIsNotMadeAgain();
    void journalOfAnotherHandIsRead();
    void whatIsNotReadIsKeptBeforeASave();
    void changesBySomebodyElseAreNotOverwritten();
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
    QStringList states;
    for (const QString& command : EachKind) {
        states.append(project.state());
        QCOMPARE(project.run(command), QString());
        const QString state = project.state();
        const auto commands = project.journal().count('\n');
        const QStringList said = project.open();
        QCOMPARE(project.state(), state);
        QCOMPARE(said.size(), 1); // "n changes are back"
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.journal().count('\n'), commands);
    }
    while (!states.isEmpty()) {
        QCOMPARE(project.run(QStringLiteral("undo")), QString());
        QCOMPARE(project.state(), states.takeLast());
    }
    QVERIFY(!project.editor().undoStack().canUndo());
}

void TestDesignRecovery::savedStateComesBackWithoutAJournal()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QString state = project.state();
    QSignalSpy changes(&project.editor(), &DesignEditor::changed);
    QCOMPARE(project.editor().save(), QString());
    QCOMPARE(changes.size(), 1);
    QVERIFY(!project.editor().isModified());
    QVERIFY(project.journal().isEmpty());
    QCOMPARE(project.open(), QStringList());
    QCOMPARE(project.state(), state);
    QVERIFY(!project.editor().isModified());
}

void TestDesignRecovery::undoingPastASaveComesBackToo()
{
    EditedProject project;
    QStringList states;
    for (const QString& command : EachKind) {
        states.append(project.state());
        project.run(command);
    }
    QCOMPARE(project.editor().save(), QString());
    for (int i = states.size() - 1; i >= 0; --i) {
        QCOMPARE(project.run(QStringLiteral("undo")), QString());
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.state(), states[i]);
    }
    project.open();
    QCOMPARE(project.state(), states.first());
}

// As when the program ends between writing the placements and emptying the journal, and when it went on after that
// because the journal could not be emptied.
void TestDesignRecovery::journalThatWasSavedIsNotMadeAgain()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QByteArray journal = project.journal();
    const QString state = project.state();
    QCOMPARE(project.editor().save(), QString());
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
    QVERIFY(!QFile::exists(project.journalFile() + QStringLiteral(".aside-1")));
}

// Line ends of another system, no first line, and both.
void TestDesignRecovery::journalOfAnotherHandIsRead()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QByteArray written = project.journal();
    const QString state = project.state();
    for (QByteArray journal : {written, written.mid(written.indexOf('\n') + 1)}) {
        project.setJournal(journal.replace("\n", "\r\n"));
        QCOMPARE(project.open().size(), 1);
        QCOMPARE(project.state(), state);
    }
    const QByteArray unnamed = project.journal();
    QCOMPARE(project.editor().save(), QString());
    project.setJournal(unnamed); // as if the program had ended before it emptied it
    QCOMPARE(project.open(), QStringList());
    QCOMPARE(project.state(), state);
}

// When it could not be set aside at first because somebody else had the project.
void TestDesignRecovery::whatIsNotReadIsKeptBeforeASave()
{
    EditedProject project;
    project.run(EachKind.first());
    const QByteArray journal = project.journal() + "zel_resource place -rsc top/precious -id 50\n";
    project.open(); // gives its lock back
    project.setJournal(journal);
    zeltest::write(project.journalFile() + ".lock", "1\nzelchip\nfarhost\n");
    const QString said = project.open().join(QLatin1Char(10));
    QVERIFY2(said.contains("No change is accepted"), qPrintable(said));
    QVERIFY(project.run(EachKind[1]).contains("farhost"));
    QVERIFY(QFile::remove(project.journalFile() + ".lock"));
    QCOMPARE(project.editor().save(), QString());
    QCOMPARE(contentOf(project.journalFile() + ".aside-1"), journal);
    QCOMPARE(project.run(EachKind[1]), QString());
}

// By other means than a program that asks for the lock; also where the size stays the same.
void TestDesignRecovery::changesBySomebodyElseAreNotOverwritten()
{
    EditedProject project;
    project.run(EachKind[0]);
    QCOMPARE(project.editor().save(), QString());
    project.run(EachKind[1]);
    const QByteArray journal = project.journal();
    project.open();
    project.setJournal(QByteArray(journal).replace("-id 20", "-id 30"));
    for (int i = 0; i < 2; ++i)
        QVERIFY((i == 0 ? project.run(EachKind[2]) : project.editor().save()).contains("another program has changed"));
    project.setJournal(journal);
    project.open();
    QCOMPARE(project.run(EachKind[2]), QString());
    const QByteArray saved = contentOf(project.editor().placementFile()).replace("-id 12", "-id 11");
    zeltest::write(project.editor().placementFile(), saved);
    QVERIFY(project.editor().save().contains("another program has changed"));
    QCOMPARE(contentOf(project.editor().placementFile()), saved);
}

void TestDesignRecovery::journalOfAnotherStateIsSetAside()
{
    EditedProject project;
    project.run(EachKind.first());
    const QByteArray journal = project.journal();
    QCOMPARE(project.editor().save(), QString());
    const QString state = project.state();
    project.setJournal(journal.left(journal.size() - 2) + "1\n"); // not what was saved, at another place
    QCOMPARE(project.open().size(), 1);
    QCOMPARE(project.state(), state);
    QVERIFY(QFile::exists(project.journalFile() + QStringLiteral(".aside-1")));
    QVERIFY(!project.editor().isModified());
}

void TestDesignRecovery::tornLineIsDroppedAndSaid_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("half a command") << QByteArray("zel_resource pla");
    QTest::newRow("a whole one without its line end") << QByteArray("zel_resource place -rsc top/core -id 51");
    QTest::newRow("half a comment") << QByteArray("# toget");
    QTest::newRow("not all of what counts together")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\n");
    QTest::newRow("nothing of what counts together") << QByteArray("# together 2\n");
    QTest::newRow("half of the second of two")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\nzel_resou");
    QTest::newRow("zeros, as after a power cut") << QByteArray(17, '\0');
}

void TestDesignRecovery::tornLineIsDroppedAndSaid()
{
    QFETCH(QByteArray, end);
    EditedProject project;
    project.run(EachKind.first());
    const QString state = project.state();
    const QByteArray whole = project.journal();
    project.setJournal(whole + end);
    const QStringList said = project.open();
    QCOMPARE(said.size(), 3);
    QVERIFY(said.first().contains(QStringLiteral("cut off")));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), whole);
    QCOMPARE(project.run(EachKind[1]), QString()); // what follows is whole again
    project.open();
    QVERIFY(project.journal().startsWith(whole));
}

void TestDesignRecovery::foreignCommandsAreRefusedAndKept_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("a command of Tcl") << QByteArray("exec touch /tmp/never");
    QTest::newRow("one inside another") << QByteArray("zel_resource reset -ip [exit]");
    QTest::newRow("a question") << QByteArray("zel_resource list");
    QTest::newRow("reading a parameter") << QByteArray("zel_resource configure -ip top/core -key frequency");
    QTest::newRow("a parameter out of its bounds")
        << QByteArray("zel_resource configure -ip top/core -key frequency -value 1");
    QTest::newRow("reading a setting") << QByteArray("zel_setting -id 10 -key CH0");
    QTest::newRow("a placement that the rules refuse") << QByteArray("zel_resource place -rsc top/core -id 10");
    QTest::newRow("undo") << QByteArray("undo");
    QTest::newRow("an open brace") << QByteArray("zel_resource place -rsc {top/core");
    QTest::newRow("brackets in brackets") << "zel_setting -id " + QByteArray(50'000, '[');
    QTest::newRow("two commands in a line") << QByteArray("zel_resource reset -ip top/duo; undo");
    QTest::newRow("a value of the environment") << QByteArray("zel_resource reset -ip $env(HOME)");
    QTest::newRow("a line longer than any command") << "zel_resource reset -ip " + QByteArray(2 << 20, 'x');
    QTest::newRow("something behind a zero") << QByteArray("zel_resource reset -ip top/duo\0x", 33);
    QTest::newRow("noise") << QByteArray("\xff\xfe\x01 } {");
}

void TestDesignRecovery::foreignCommandsAreRefusedAndKept()
{
    QFETCH(QByteArray, command);
    EditedProject project;
    project.run(EachKind.first());
    project.run(EachKind[1]);
    project.run(QStringLiteral("undo")); // takes several commands
    const QString state = project.state();
    const QByteArray good = project.journal();
    QVERIFY(good.contains("\n# together "));
    const int secondCommand = static_cast<int>(good.indexOf('\n', good.indexOf('\n') + 1)) + 1;
    const QByteArray bad = good.left(secondCommand) + command + '\n' + good.mid(secondCommand);
    project.setJournal(bad);
    const QString said = project.open().join(QLatin1Char('\n'));
    QVERIFY2(said.contains(project.journalFile() + QStringLiteral(":3: refused ")), qPrintable(said));
    QCOMPARE(contentOf(project.journalFile() + QStringLiteral(".aside-1")), bad);
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), good);
}

// Nor can it be done again.
void TestDesignRecovery::changeOfSeveralCommandsComesBackWholeOrNot_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("its second command is refused") << QByteArray(
        "# together 2\nzel_resource place -rsc top/core -id 51\nzel_resource place -rsc top/core -id 10\n");
    QTest::newRow("its second command is missing")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\n# together 0\n");
}

void TestDesignRecovery::changeOfSeveralCommandsComesBackWholeOrNot()
{
    QFETCH(QByteArray, end);
    EditedProject project;
    project.run(EachKind.first());
    const QString state = project.state();
    const QByteArray journal = project.journal();
    project.setJournal(journal + end);
    const QString said = project.open().join(QLatin1Char('\n'));
    QVERIFY2(said.contains(QStringLiteral(":3: refused zel_resource place -rsc top/core")), qPrintable(said));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), journal);
    QVERIFY(!project.editor().undoStack().canRedo());
}

// A person can read what is said of it.
void TestDesignRecovery::fileThatIsNoJournalIsSaidInAFewLines()
{
    EditedProject project;
    project.run(EachKind.first()); // there is a journal
    project.run(QStringLiteral("undo"));
    const QString state = project.state();
    const QByteArray noise = QByteArray("\x1b[31m\x07" + QByteArray(5000, '\xfe') + '\n').repeated(300) + "end\n";
    project.setJournal(noise);
    const QStringList said = project.open();
    QVERIFY2(said.size() < 30, qPrintable(QString::number(said.size())));
    for (const QString& line : said) {
        QVERIFY(line.size() < 600);
        QVERIFY(std::all_of(line.begin(), line.end(), [](QChar character) { return character.isPrint(); }));
    }
    QVERIFY(said.contains(project.journalFile() + QStringLiteral(": refused 281 more")));
    QCOMPARE(contentOf(project.journalFile() + QStringLiteral(".aside-1")), noise);
    QCOMPARE(project.state(), state);
}

void TestDesignRecovery::damagedLineCostsNoneOfTheOthers()
{
    constexpr int Lines = 20000;
    EditedProject project;
    project.run(EachKind.first());
    QByteArray journal = project.journal() + "zel_resource place -rsc {top/co\n";
    for (int i = 0; i < Lines; ++i)
        journal += i % 2 == 0 ? "zel_resource place -rsc top/core -id 50\n" : "zel_resource reset -ip top/core\n";
    project.setJournal(journal + "zel_resource place -rsc top/core -id 51\n");
    QVERIFY(project.open().last().startsWith(QString::number(Lines + 2)));
    QVERIFY(project.state().contains(QStringLiteral("top/core@51")));
}

ZEL_TEST_MAIN(TestDesignRecovery)
#include "tst_designrecovery.moc"
