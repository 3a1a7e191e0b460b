// SPDX-License-Identifier: MIT
#include "engine/search/placementsearch.h"
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QSignalSpy>
#include <QTest>

#include <QApplication>
#include <QTimer>
#include <algorithm>

using namespace zeltest;
using mirn::zelengine::Placement;
using mirn::zelengine::PlacementSearch;

class TestDesignRecovery : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // The program may end between any two commands, and only the journal is left. It is the undo history as well. What
    // is saved needs no journal, and undoing past it is a change.
    void everyStateComesBackAfterACrash()
    {
        EditedProject project;
        QList<QStringList> states{project.state()};
        for (const QString& command : EachKind) {
            QCOMPARE(project.run(command), QString());
            states.append(project.state());
            const auto commands = project.journal().count('\n');
            QCOMPARE(project.reopen(), QString());
            QVERIFY(project.editor().isModified());
            QCOMPARE(project.journal().count('\n'), commands);
        }
        for (const bool isSaved : {false, true}) {
            for (auto i = states.size() - 2; i >= 0; --i) {
                QCOMPARE(project.run("undo"), QString());
                QCOMPARE(project.editor().isModified(), isSaved || i > 0);
                QCOMPARE(project.state(), states[i]);
            }
            QVERIFY(!project.editor().undoStack().canUndo());
            if (isSaved)
                break;
            while (project.editor().undoStack().canRedo())
                QCOMPARE(project.run("redo"), QString());
            QCOMPARE(project.state(), states.last());
            QSignalSpy changes(&project.editor(), &DesignEditor::changed);
            QCOMPARE(project.run("save"), QString());
            QCOMPARE(changes.size(), 1);
            QVERIFY(!project.editor().isModified());
            QVERIFY(project.journal().isEmpty());
        }
        QCOMPARE(project.reopen(), QString());
        project.setJournal({});
        QCOMPARE(project.open(), QStringList());
        QCOMPARE(project.state(), states.last());
        QVERIFY(!project.editor().isModified());
    }

    // The journal may have the line ends of another system, and then no first line either. The program may end between
    // writing the placements and emptying the journal, or go on after that because the journal could not be emptied.
    void journalIsReadOnceWhateverItsForm()
    {
        EditedProject project;
        project.run(EachKind);
        const QByteArray written = project.journal();
        const QStringList state = project.state();
        const QByteArray foreign = QByteArray(written).replace("\n", "\r\n");
        for (const QByteArray& journal : {foreign.mid(foreign.indexOf('\n') + 1), foreign, written}) {
            project.startOver();
            project.run(EachKind[0]); // there is a journal
            project.setJournal(journal);
            QCOMPARE(project.open().size(), 1);
            QCOMPARE(project.state(), state);
            QCOMPARE(project.run("save"), QString());
            project.setJournal(journal);
            QCOMPARE(project.open(), QStringList());
            QCOMPARE(project.state(), state);
            QVERIFY(!project.editor().isModified());
        }
        project.setJournal(written + "zel_setting -id 10 -key CH1 -value SLOW\n");
        QCOMPARE(project.open(), QStringList("1 change that was not saved is back."));
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.run("undo"), QString());
        QCOMPARE(project.state(), state);
        QCOMPARE(project.reopen(), QString());
        QCOMPARE(project.journalAside(), QByteArray());
    }

    // Right behind what is saved stands a change whose second command is missing.
    void incompleteChangeAfterWhatIsSavedIsSaid()
    {
        EditedProject project;
        project.run(EachKind);
        const QByteArray saved = project.journal();
        QCOMPARE(project.run("save"), QString());
        const QByteArray off = "zel_setting -id 10 -key CH1 -value OFF\n";
        project.setJournal(saved + "# together 2\n" + off + "# together 1\n" + off);
        const QString where = project.journalFile() + ':' + QString::number(saved.count('\n') + 1) + ": refused ";
        QVERIFY(project.open().first().startsWith(where));
    }

    // At first it could not be set aside, because somebody else had the project.
    void whatIsNotReadIsKeptBeforeASave()
    {
        EditedProject project;
        project.run(EachKind[0]);
        const QByteArray journal = project.journal() + "zel_resource place -rsc top/precious -id 50\n";
        project.open(); // returns its lock
        project.setJournal(journal);
        writeFile(project.journalFile() + ".lock", "1\nzelchip\nfarhost\n");
        const QString said = project.open().join('\n');
        QVERIFY2(said.contains("No change is accepted"), qPrintable(said));
        QVERIFY(project.run(EachKind[1]).contains("farhost"));
        QVERIFY(QFile::remove(project.journalFile() + ".lock"));
        QCOMPARE(project.run("save"), QString());
        QCOMPARE(project.journalAside(), journal);
        QCOMPARE(project.run(EachKind[1]), QString());
    }

    // Whoever has searched for places works with indices, which outlive a removal; a line of the journal that is
    // refused later would take its whole group with it.
    void whatWasRemovedMeanwhileTakesNoPlace()
    {
        EditedProject project;
        const Design& design = project.editor().engine().design();
        const std::vector<Placement> found{{design.find("top/core"), 50}, {design.find("top/{br}%2"), 51}};
        project.run("zel_resource remove -ip top/core");
        QCOMPARE(project.editor().move("Place", found).sentence(), "top/core was removed");
        const std::vector<Placement> left = PlacementSearch::ofUnplaced(design, found);
        QCOMPARE(left.size(), std::size_t(1));
        QCOMPARE(project.editor().move("Place", left).sentence(), QString());
        QVERIFY(PlacementSearch::ofUnplaced(design, found).empty()); // somebody has placed it by now
        QCOMPARE(project.reopen(), QString());
    }

    // Somebody changes the files without asking for the lock, and even keeps their size.
    void changesBySomebodyElseAreNotOverwritten()
    {
        EditedProject project;
        QCOMPARE(project.run({EachKind[0], "save", EachKind[1]}), QString());
        const QByteArray journal = project.journal();
        project.open();
        project.setJournal(QByteArray(journal).replace("-id 20", "-id 30"));
        QVERIFY(project.run(EachKind[2]).contains("another program has changed"));
        QVERIFY(project.run("save").contains("another program has changed"));
        project.setJournal(journal);
        project.open();
        QCOMPARE(project.run(EachKind[2]), QString());
        const QByteArray saved = contentOf(project.editor().placementFile()).replace("-id 12", "-id 11");
        writeFile(project.editor().placementFile(), saved);
        QVERIFY(project.run("save").contains("another program has changed"));
        QCOMPARE(contentOf(project.editor().placementFile()), saved);
    }

    // The placement file may hold something that the design does not know any more, or end in the middle of a line.
    void placementsThatAreNotReadAreKept()
    {
        for (const auto& [end, said] : {std::pair("zel_resource reset -ip top/nobody\n", ":3: refused "),
                 std::pair("zel_resource res", ": the last line is cut off and was not read.")}) {
            EditedProject project;
            QCOMPARE(project.run({EachKind[0], "save"}), QString());
            const QString placement = project.editor().placementFile();
            const QByteArray saved = contentOf(placement) + end;
            writeFile(placement, saved);
            const QStringList messages = project.open();
            QVERIFY2(messages.first().startsWith(placement + said), qPrintable(messages.first()));
            QCOMPARE(messages.last(), "The next save keeps the file as it is under another name.");
            QVERIFY(project.editor().isModified());
            QCOMPARE(project.run("save"), QString());
            QVERIFY(!project.editor().isModified());
            QCOMPARE(contentOf(placement + ".aside-1"), saved);
        }
    }

    void journalOfAnotherStateIsSetAside()
    {
        EditedProject project;
        project.run(EachKind[0]);
        const QByteArray journal = project.journal();
        QCOMPARE(project.run("save"), QString());
        const QStringList state = project.state();
        project.setJournal(journal.left(journal.size() - 2) + "1\n"); // not what was saved, at another place
        QCOMPARE(project.open().size(), 1);
        QCOMPARE(project.state(), state);
        QVERIFY(!project.journalAside().isEmpty());
        QVERIFY(!project.editor().isModified());
    }

    void tornLineIsDroppedAndSaid_data()
    {
        const QByteArray place = "zel_resource place -rsc top/core -id 51";
        const Rows<QByteArray, bool> row; // true where not all of several commands are there
        row("half a command", place.left(16), false);
        row("a whole one without its line end", place, false);
        row("half a comment", "# toget", false);
        row("not all of what counts together", "# together 2\n" + place + '\n', true);
        row("nothing of what counts together", "# together 2\n", true);
        row("half of the second of two", "# together 2\n" + place + "\nzel_resou", false);
        row("zeros, as after a power cut", QByteArray(17, '\0'), false);
    }

    void tornLineIsDroppedAndSaid()
    {
        const auto [end, isGroup] = row<QByteArray, bool>();
        EditedProject project;
        project.run(EachKind[0]);
        const QStringList state = project.state();
        const QByteArray whole = project.journal();
        project.setJournal(whole + end);
        const QStringList said = project.open();
        QCOMPARE(said.size(), 3);
        const QString file = project.journalFile();
        QVERIFY(
            said.first().startsWith(isGroup ? file + ":3: the last change was cut off" : "The last line of " + file));
        QCOMPARE(project.state(), state);
        QCOMPARE(project.journal(), whole);
        QCOMPARE(project.run(EachKind[1]), QString()); // what follows is whole again
        project.open();
        QVERIFY(project.journal().startsWith(whole));
    }

    void foreignCommandsAreRefusedAndKept_data()
    {
        const Rows<QByteArray> row;
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
        const QByteArray two = "# together 2\nzel_resource place -rsc top/core -id 51\n";
        row("the second of two commands", two + "zel_resource place -rsc top/core -id 10");
        row("a second command that is missing", two + "# together 0");
    }

    void foreignCommandsAreRefusedAndKept()
    {
        const auto [command] = row<QByteArray>();
        EditedProject project;
        QCOMPARE(project.run({EachKind[0], EachKind[1], "undo"}), QString()); // undoing takes several commands
        const QStringList state = project.state();
        const QByteArray good = project.journal();
        QVERIFY(good.contains("\n# together "));
        const auto secondCommand = static_cast<int>(good.indexOf('\n', good.indexOf('\n') + 1)) + 1;
        const QByteArray bad = good.left(secondCommand) + command + '\n' + good.mid(secondCommand);
        project.setJournal(bad);
        const QString said = project.open().join('\n');
        QVERIFY2(said.contains(project.journalFile() + ":3: refused "), qPrintable(said));
        QCOMPARE(project.journalAside(), bad);
        QCOMPARE(project.state(), state);
        QCOMPARE(project.journal(), good);
        QVERIFY(!project.editor().undoStack().canRedo()); // what was refused can be done again no more
    }

    // A person can read what the program says of it.
    void fileThatIsNoJournalIsSaidInAFewLines()
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
        QCOMPARE(project.journalAside(), noise);
        QCOMPARE(project.state(), state);
    }

    void damagedLineCostsNoneOfTheOthers()
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

    // The changes before it would be lost when the program ends without saving.
    void removedJournalIsAnError()
    {
        EditedProject project;
        project.run(EachKind[0]);
        const QStringList state = project.state();
        QVERIFY(QFile::remove(project.journalFile()));
        const QString answer = project.run(EachKind[1]);
        QVERIFY2(answer.contains("has been removed; save"), qPrintable(answer));
        QCOMPARE(project.state(), state);
        QCOMPARE(project.run({"save", EachKind[1]}), QString());
        QCOMPARE(project.reopen(), QString());
    }

    // The files that links lead to are somebody else's.
    void linksAreReadAndReplaced()
    {
        EditedProject project;
        const QString placement = project.editor().placementFile();
        const QString journal = project.journalFile();
        QCOMPARE(project.run({EachKind[0], "save", EachKind[1]}), QString());
        for (const QString& file : {placement, journal})
            QVERIFY(QFile::rename(file, file + ".outside") && QFile::link(file + ".outside", file));
        const QByteArray saved = contentOf(placement);
        const QByteArray kept = contentOf(journal);
        QCOMPARE(project.reopen(), QString());
        QCOMPARE(project.run(EachKind[2]), QString());
        QVERIFY(!QFileInfo(journal).isSymLink() && QFileInfo(placement).isSymLink());
        QCOMPARE(project.run("save"), QString());
        QVERIFY(!QFileInfo(placement).isSymLink());
        QCOMPARE(project.reopen(), QString());
        QCOMPARE(contentOf(placement + ".outside"), saved);
        QCOMPARE(contentOf(journal + ".outside"), kept);
    }

    void commandsAnswer_data()
    {
        const Rows<QString, QString> row;
        row("some", "zel_resource list top/duo*", "top/duo top/duo/a top/duo/b top/duo/ref");
        row("those not placed", "zel_resource list -unplaced */b", "top/duo/b");
        row("a range that never ends", "zel_resource list {*[}", "");
        row("an awkward name", "lindex [zel_resource list {*/a\\[1\\]$x}] 0", "top/my ip/a[1]$x");
        row("a site", "dict get [zel_resource get -ip top/duo/a] site", "U0_CH0");
        row("where it may go", "zel_resource sites -rsc top/core", "50 51");
        row("nothing against it", "zel_resource why -rsc top/core -id 50", "");
        row("why not", "zel_resource why -rsc top/core -id 10", "U0 (Unit) does not take resources of type PLL");
        row("a setting", "zel_setting -id 10 -key CH0", "SLOW");
        row("a parameter", "zel_resource configure -ip top/duo -key rate", "2.5");
        row("all parameters", "dict get [zel_resource get -ip top/core] parameters frequency", "100");
        row("no such resource", "zel_resource place -rsc nobody -id 11", "ERROR there is no resource \"nobody\"");
        row("a site by its name", "zel_resource why -rsc top/core -id U0",
            "U0 (Unit) does not take resources of type PLL");
        row("a setting of a site by its name", "zel_setting -id U0 -key CH0", "SLOW");
        row("no such site", "zel_resource place -rsc top/core -id x", "ERROR there is no site \"x\"");
        row("a number that is no id", "zel_setting -id 99999999999 -key CH0 -value FAST",
            "ERROR expected integer but got \"99999999999\"");
        row("too little", "zel_resource place -rsc top/core",
            "ERROR wrong # args: should be \"zel_resource place -rsc NAME -id SITE\"");
        row("a lock on what is not placed", "zel_resource lock -ip top/core",
            "ERROR top/core is not placed, and only what is placed can be locked");
        row("nothing locked", "zel_resource list -locked", "");
        row("no value", "zel_resource place -rsc top/core -id",
            "ERROR wrong # args: should be \"zel_resource place -rsc NAME -id SITE\"");
        row("an option twice", "zel_resource why -id 50 -rsc top/core -rsc top/core",
            "ERROR wrong # args: should be \"zel_resource why -rsc NAME -id SITE\"");
        row("something else", "zel_resource reset -ip top/duo x",
            "ERROR wrong # args: should be \"zel_resource reset -ip NAME\"");
        row("two patterns", "zel_resource list a b",
            "ERROR wrong # args: should be \"zel_resource list ?-unplaced? ?-locked? ?PATTERN?\"");
        row("a name like an option", "zel_resource why -rsc -id -id 50", "ERROR there is no resource \"-id\"");
        row("a name like the flag of another form", "zel_resource place -rsc -auto -id 50",
            "ERROR there is no resource \"-auto\"");
        row("the other form", "zel_resource place -seconds 3",
            "ERROR wrong # args: should be \"zel_resource place -auto ?-rsc NAME ...? ?-seconds N? ?-partial?\"");
        row("nothing of that name", "zel_resource sites -rsc x", "ERROR there is no resource \"x\"");
        row("no settings", "zel_setting -id 70 -key CH0", "ERROR element 70 has no settings");
        row("the value that is in force", "zel_resource configure -ip top/duo -key rate -value 2.50", "");
        row("unknown verb", "zel_resource put",
            "ERROR unknown subcommand \"put\" of zel_resource: must be configure, get, list, lock, place, "
            "remove, reset, restore, sites, swap, unlock, why");
        row("no key", "zel_resource configure -ip top/duo",
            "ERROR wrong # args: should be \"zel_resource configure -ip NAME -key K ?-value V?\"");
        row("no such key", "zel_setting -id 10 -key CH7", "ERROR U0 has no setting \"CH7\"");
        row("nothing to undo", "undo", "ERROR there is nothing to undo");
        row("nothing to redo", "redo", "ERROR there is nothing to redo");
        row("too much", "undo 3", "ERROR wrong # args: should be \"undo\"");
    }

    void commandsAnswer()
    {
        const auto [question, answer] = row<QString, QString>();
        EditedProject project;
        const QStringList state = project.state();
        QCOMPARE(project.run(question), answer);
        QCOMPARE(project.state(), state);
        QVERIFY(project.journal().isEmpty());
        QVERIFY(!project.editor().undoStack().canUndo());
    }

    // One step in the journal and the undo history, whatever the number of resources; nothing unless all have a place,
    // or the command says so.
    void theRestIsPlacedInOneStep_data()
    {
        const QByteArray three
            = R"([{"name": "p", "type": "PLL"}, {"name": "q", "type": "PLL"}, {"name": "r", "type": "PLL"}])";
        const Rows<QByteArray, QString, QString, int> row; // arguments, the beginning of the answer, how many
        row("all", SmallDesign, "", "answer placed placed {top/duo/b", 4);
        row("one", SmallDesign, "-rsc top/core", "answer placed placed {top/core 50} missing {} conflict {} reason {}",
            1);
        row("several, in little time", SmallDesign, "-seconds 0.5 -rsc top/duo top/core",
            "answer placed placed {top/du", 2);
        row("nothing to do", SmallDesign, "-rsc top/duo/a", "answer placed placed {} missing {}", 0);
        row("impossible", three, "",
            "answer impossible placed {} missing {top/p top/q top/r} conflict {top/p top/q top/r} reason {", 0);
        row("as many as possible", three, "-partial", "answer impossible placed {top/p", 2);
        row("no time", SmallDesign, "-seconds 0", "ERROR expected a number of seconds up to 86400 but got \"0\"", 0);
        row("no such resource", SmallDesign, "-rsc top/core top/x", "ERROR there is no resource \"top/x\"", 0);
    }

    void theRestIsPlacedInOneStep()
    {
        const auto [design, arguments, answer, placed] = row<QByteArray, QString, QString, int>();
        EditedProject project({}, design);
        const QStringList state = project.state();
        const QString said = project.run("zel_resource place -auto " + arguments);
        QVERIFY2(said.startsWith(answer), qPrintable(said));
        QCOMPARE(project.editor().undoStack().count(), placed > 0 ? 1 : 0);
        QCOMPARE(project.journal().count("zel_resource place"), placed);
        QCOMPARE(project.reopen(), QString());
        if (placed > 0)
            QCOMPARE(project.run("undo"), QString());
        QCOMPARE(project.state(), state);
    }

    // Dialogs write through the engine, and not through a command.
    void changesOfDialogsAreKeptToo()
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
        QCOMPARE(
            project.run(beforeAndAfterUndo.arg("zel_resource configure -ip top/core -key frequency")), "75 {} 100");
    }
};

ZEL_TEST_MAIN(TestDesignRecovery)
#include "tst_designrecovery.moc"
