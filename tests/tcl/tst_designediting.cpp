// SPDX-License-Identifier: MIT
#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/tcl/designtcl.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/engine/projectfolder.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <memory>

#include <sys/resource.h>

using namespace mirn::zelchip;
using mirn::zelengine::ReferenceEngine;

namespace {

const char* const Design = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"},
    {"name": "b", "type": "DCUCHANNEL"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true}]},
  {"name": "my ip", "type": "IP", "children": [{"name": "a[1]$x", "type": "DCUCHANNEL"}]},
  {"name": "{br}%2", "type": "PLL"},
  {"name": "core", "type": "PLL"}
])";

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A project whose design can be edited, closed and opened again.
class EditedProject
{
public:
    EditedProject()
    {
        m_folder.write(QStringLiteral("design.json"), designWith(Design));
        open();
    }

    // As a program that is started anew; what the one before did in memory is gone.
    QStringList open()
    {
        m_editor.reset();
        QString error;
        QStringList warnings;
        m_engine = ReferenceEngine::open(m_folder.path(), &error, &warnings);
        if (!m_engine)
            qFatal("%s", qPrintable(error));
        m_editor = std::make_unique<DesignEditor>(*m_engine, directory());
        m_tcl = std::make_unique<TclInterpreter>();
        addDesignCommands(*m_tcl, *m_editor);
        return m_editor->recover();
    }

    QString run(const QString& script)
    {
        const TclResult result = m_tcl->evaluate(script);
        return result.isOk ? result.text : QStringLiteral("ERROR ") + result.text;
    }

    // What is where and set how, in one text.
    QString state()
    {
        QStringList facts;
        for (int index : m_engine->design().all()) {
            const auto& resource = m_engine->design().resource(index);
            facts.append(resource.path + QLatin1Char('@') + QString::number(resource.site));
            for (const char* key : {"rate", "frequency"})
                facts.last() += QLatin1Char(',') + m_engine->design().parameter(index, QLatin1String(key));
        }
        for (const char* key : {"CH0", "CH1"})
            facts.append(m_engine->settings().value(10, QLatin1String(key)));
        return facts.join(QLatin1Char(' '));
    }

    QString directory() const { return m_folder.path() + QStringLiteral("/work/impl"); }
    QString journalFile() const { return directory() + QStringLiteral("/journal.tcl"); }

    QByteArray journal() const { return contentOf(journalFile()); }

    void setJournal(const QByteArray& content)
    {
        QFile file(journalFile());
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write the journal");
    }

    DesignEditor& editor() { return *m_editor; }
    ReferenceEngine& engine() { return *m_engine; }

private:
    ProjectFolder m_folder;
    std::unique_ptr<ReferenceEngine> m_engine;
    std::unique_ptr<DesignEditor> m_editor;
    std::unique_ptr<TclInterpreter> m_tcl;
};

// While it lives no file of this process grows beyond a size.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t size)
        : m_handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{size, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

// One of each kind of change, each of which the one before makes possible or not.
const QStringList EachKind{"zel_resource place -rsc {top/my ip/a[1]$x} -id 12",
    "zel_resource place -rsc top/duo -id 20", "zel_resource place -rsc top/core -id 50",
    "zel_resource reset -ip top/core", "zel_resource place -rsc {top/{br}%2} -id 50",
    "zel_setting -id 10 -key CH0 -value FAST", "zel_resource configure -ip top/duo -key rate -value 5",
    "zel_resource configure -ip top/duo/ref -key frequency -value 62.5",
    "zel_resource configure -ip {top/{br}%2} -key frequency -value 148.5", "zel_resource remove -ip top/duo",
    "zel_setting -id 10 -key CH1 -value OFF", "zel_resource remove -ip top/core",
    "zel_setting -id 10 -key CH1 -value FAST"};

} // namespace

class TestDesignEditing : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void undoAndRedoStepThroughEveryChange();
    void everyStateComesBackAfterACrash();
    void savedStateComesBackWithoutAJournal();
    void undoingPastASaveComesBackToo();
    void journalOfAnotherStateIsSetAside();
    void tornLineIsDroppedAndSaid_data();
    void tornLineIsDroppedAndSaid();
    void foreignCommandsAreRefusedAndKept_data();
    void foreignCommandsAreRefusedAndKept();
    void changeOfSeveralCommandsComesBackWholeOrNot_data();
    void changeOfSeveralCommandsComesBackWholeOrNot();
    void fileThatIsNoJournalIsSaidInAFewLines();
    void damagedLineCostsNoneOfTheOthers();
    void removedJournalIsAnError();
    void changesThatCannotBeKeptAreRefused();
    void refusalsSayWhy_data();
    void refusalsSayWhy();
    void questionsAreAnswered();
    void changesOfTheConfigureDialogAreKeptToo();
    void configuringTheSameValueIsNoChange();
    void settingsOfTheViewAreKeptToo();
};

void TestDesignEditing::undoAndRedoStepThroughEveryChange()
{
    EditedProject project;
    QStringList states{project.state()};
    for (const QString& command : EachKind) {
        QCOMPARE(project.run(command), QString());
        QVERIFY(project.state() != states.last());
        states.append(project.state());
    }
    for (int i = EachKind.size() - 1; i >= 0; --i) {
        QCOMPARE(project.run(QStringLiteral("undo")), QString());
        QCOMPARE(project.state(), states[i]);
    }
    QCOMPARE(project.run(QStringLiteral("undo")), QStringLiteral("ERROR there is nothing to undo"));
    for (int i = 1; i < states.size(); ++i) {
        QCOMPARE(project.run(QStringLiteral("redo")), QString());
        QCOMPARE(project.state(), states[i]);
    }
    QCOMPARE(project.run(QStringLiteral("redo")), QStringLiteral("ERROR there is nothing to redo"));
}

// The program may end between any two commands; the journal is all that is left.
void TestDesignEditing::everyStateComesBackAfterACrash()
{
    EditedProject project;
    QStringList script = EachKind;
    for (int i = 0; i < 6; ++i)
        script.append(QStringLiteral("undo"));
    script += QStringList{"redo", "redo"};
    for (const QString& command : std::as_const(script)) {
        QCOMPARE(project.run(command), QString());
        const QString state = project.state();
        const auto commands = project.journal().count('\n');
        const QStringList said = project.open();
        QCOMPARE(project.state(), state);
        QCOMPARE(said.size(), 1); // "n changes are back"
        QVERIFY(project.editor().isModified());
        QCOMPARE(project.journal().count('\n'), commands);
        // The undo history is what the journal holds: enough to go on.
        if (command == QLatin1String("undo"))
            break;
    }
}

void TestDesignEditing::savedStateComesBackWithoutAJournal()
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

void TestDesignEditing::undoingPastASaveComesBackToo()
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

// As when the program ends between writing the placements and emptying the journal.
void TestDesignEditing::journalOfAnotherStateIsSetAside()
{
    EditedProject project;
    for (const QString& command : EachKind)
        project.run(command);
    const QByteArray journal = project.journal();
    const QString state = project.state();
    QCOMPARE(project.editor().save(), QString());
    project.setJournal(journal);
    QCOMPARE(project.open().size(), 1);
    QCOMPARE(project.state(), state);
    QVERIFY(QFile::exists(project.journalFile() + QStringLiteral(".aside-1")));
    QVERIFY(!project.editor().isModified());
}

void TestDesignEditing::tornLineIsDroppedAndSaid_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("half a command") << QByteArray("zel_resource pla");
    QTest::newRow("a whole one without its line end") << QByteArray("zel_resource place -rsc top/core -id 51");
    QTest::newRow("an open brace") << QByteArray("zel_resource place -rsc {top/co\n");
    QTest::newRow("half a comment") << QByteArray("# toget");
    QTest::newRow("not all of what counts together")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\n");
    QTest::newRow("nothing of what counts together") << QByteArray("# together 2\n");
    QTest::newRow("half of the second of two")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\nzel_resou");
    QTest::newRow("zeros, as after a power cut") << QByteArray(17, '\0');
}

void TestDesignEditing::tornLineIsDroppedAndSaid()
{
    QFETCH(QByteArray, end);
    EditedProject project;
    project.run(EachKind.first());
    const QString state = project.state();
    const QByteArray whole = project.journal();
    project.setJournal(whole + end);
    const QStringList said = project.open();
    QCOMPARE(said.size(), 2);
    QVERIFY(said.first().contains(QStringLiteral("cut off")));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.journal(), whole);
    QCOMPARE(project.run(EachKind[1]), QString()); // what follows is whole again
    project.open();
    QVERIFY(project.journal().startsWith(whole));
}

void TestDesignEditing::foreignCommandsAreRefusedAndKept_data()
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
    QTest::newRow("noise") << QByteArray("\xff\xfe\x01 } {");
}

void TestDesignEditing::foreignCommandsAreRefusedAndKept()
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
void TestDesignEditing::changeOfSeveralCommandsComesBackWholeOrNot_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("its second command is refused") << QByteArray(
        "# together 2\nzel_resource place -rsc top/core -id 51\nzel_resource place -rsc top/core -id 10\n");
    QTest::newRow("its second command is missing")
        << QByteArray("# together 2\nzel_resource place -rsc top/core -id 51\n# together 0\n");
}

void TestDesignEditing::changeOfSeveralCommandsComesBackWholeOrNot()
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
void TestDesignEditing::fileThatIsNoJournalIsSaidInAFewLines()
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

void TestDesignEditing::damagedLineCostsNoneOfTheOthers()
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

// What came before it would be lost when the program ends without saving.
void TestDesignEditing::removedJournalIsAnError()
{
    EditedProject project;
    project.run(EachKind.first());
    const QString state = project.state();
    QVERIFY(QFile::remove(project.journalFile()));
    const QString answer = project.run(EachKind[1]);
    QVERIFY2(answer.contains(QStringLiteral("has been removed; save")), qPrintable(answer));
    QCOMPARE(project.state(), state);
    QCOMPARE(project.editor().save(), QString());
    QCOMPARE(project.run(EachKind[1]), QString());
    const QString after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
}

// The disk is full in the middle of a line.
void TestDesignEditing::changesThatCannotBeKeptAreRefused()
{
    EditedProject project;
    QCOMPARE(project.run(EachKind.first()), QString());
    const QString state = project.state();
    const QByteArray journal = project.journal();
    {
        const FileSizeLimit limit(static_cast<rlim_t>(journal.size() + 10));
        for (const char* command : {"zel_resource place -rsc top/core -id 50", "zel_resource remove -ip top/duo",
                 "zel_setting -id 10 -key CH0 -value FAST", "zel_resource configure -ip top/duo -key rate -value 5",
                 "undo"}) {
            const QString answer = project.run(QLatin1String(command));
            QVERIFY2(answer.contains(QStringLiteral("the change cannot be kept in ")), qPrintable(answer));
            QCOMPARE(project.state(), state);
            QCOMPARE(project.journal(), journal);
        }
    }
    QCOMPARE(project.run(EachKind[1]), QString()); // there is room again
    const QString after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
}

void TestDesignEditing::refusalsSayWhy_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("answer");
    QTest::newRow("no such resource") << "zel_resource place -rsc nobody -id 11"
                                      << "there is no resource \"nobody\"";
    QTest::newRow("no number") << "zel_resource place -rsc top/core -id x"
                               << "expected integer but got \"x\"";
    QTest::newRow("too little") << "zel_resource place -rsc top/core"
                                << "wrong # args: should be \"zel_resource place -rsc NAME -id N\"";
    QTest::newRow("unknown verb")
        << "zel_resource put"
        << "unknown subcommand \"put\" of zel_resource: must be configure, get, list, place, remove, "
           "reset, restore, sites, why";
    QTest::newRow("a rate that there is not") << "zel_resource configure -ip top/duo -key rate -value 4"
                                              << "rate cannot be \"4\", expected 1.25, 2.5, 3.125, 5 or 6.25";
    QTest::newRow("no such parameter") << "zel_resource configure -ip top/duo -key colour"
                                       << "top/duo has no parameter \"colour\", expected \"rate\"";
    QTest::newRow("no key") << "zel_resource configure -ip top/duo"
                            << "wrong # args: should be \"zel_resource configure -ip NAME -key K ?-value V?\"";
    QTest::newRow("no such key") << "zel_setting -id 10 -key CH7"
                                 << "U0 has no setting \"CH7\"";
    QTest::newRow("no settings there") << "zel_setting -id 50 -key CH0"
                                       << "element 50 has no settings";
    QTest::newRow("too much") << "undo 3"
                              << "wrong # args: should be \"undo\"";
}

void TestDesignEditing::refusalsSayWhy()
{
    QFETCH(QString, command);
    QFETCH(QString, answer);
    EditedProject project;
    const QString state = project.state();
    QCOMPARE(project.run(command), QStringLiteral("ERROR ") + answer);
    QCOMPARE(project.state(), state);
    QVERIFY(project.journal().isEmpty());
}

void TestDesignEditing::questionsAreAnswered()
{
    EditedProject project;
    QCOMPARE(project.run(QStringLiteral("zel_resource list top/duo*")),
        QStringLiteral("top/duo top/duo/a top/duo/b top/duo/ref"));
    QCOMPARE(project.run(QStringLiteral("zel_resource list -unplaced */b")), QStringLiteral("top/duo/b"));
    QCOMPARE(project.run(QStringLiteral("zel_resource list {*[}")), QString()); // a range that never ends
    QCOMPARE(
        project.run(QStringLiteral("lindex [zel_resource list {*/a\\[1\\]$x}] 0")), QStringLiteral("top/my ip/a[1]$x"));
    QCOMPARE(project.run(QStringLiteral("dict get [zel_resource get -ip top/duo/a] site")), QStringLiteral("U0_CH0"));
    QCOMPARE(project.run(QStringLiteral("zel_resource sites -rsc top/core")), QStringLiteral("50 51"));
    QCOMPARE(project.run(QStringLiteral("zel_resource why -rsc top/core -id 50")), QString());
    QVERIFY(project.run(QStringLiteral("zel_resource why -rsc top/core -id 10")).size() > 10);
    QCOMPARE(project.run(QStringLiteral("zel_setting -id 10 -key CH0")), QStringLiteral("SLOW"));
    QCOMPARE(project.run(QStringLiteral("zel_resource configure -ip top/duo -key rate")), QStringLiteral("2.5"));
    QCOMPARE(project.run(QStringLiteral("dict get [zel_resource get -ip top/core] parameters frequency")),
        QStringLiteral("100"));
    QVERIFY(project.journal().isEmpty());
}

// As with placements: what is typed in it is a command like any other.
void TestDesignEditing::changesOfTheConfigureDialogAreKeptToo()
{
    EditedProject project;
    QTimer::singleShot(0, &project.editor(), [] {
        QWidget* dialog = QApplication::activeModalWidget();
        QVERIFY(dialog);
        QTest::keyClicks(dialog->focusWidget(), QStringLiteral("75"));
        QTest::keyClick(dialog, Qt::Key_Return);
    });
    const std::string name = "top/core";
    QCOMPARE(project.engine().config(&name), 1);
    QVERIFY(project.journal().endsWith("zel_resource configure -ip top/core -key frequency -value 75\n"));
    project.open();
    const QString ask = QStringLiteral("zel_resource configure -ip top/core -key frequency");
    QCOMPARE(project.run(ask), QStringLiteral("75"));
    QCOMPARE(project.run(QStringLiteral("undo;") + ask), QStringLiteral("100"));
}

// Nothing changes, so there is nothing to undo.
void TestDesignEditing::configuringTheSameValueIsNoChange()
{
    EditedProject project;
    QCOMPARE(project.run(QStringLiteral("zel_resource configure -ip top/duo -key rate -value 2.50")), QString());
    QVERIFY(project.journal().isEmpty());
    QVERIFY(!project.editor().undoStack().canUndo());
}

// The settings dialog writes through the engine and not through a command.
void TestDesignEditing::settingsOfTheViewAreKeptToo()
{
    EditedProject project;
    const std::string id = "10";
    const std::string key = "CH0";
    const std::string value = "FAST";
    QCOMPARE(project.engine().setDynamicDialogValue(&id, 1, &key, &value), 1);
    QVERIFY(project.journal().endsWith("zel_setting -id 10 -key CH0 -value FAST\n"));
    project.open();
    QCOMPARE(project.run(QStringLiteral("zel_setting -id 10 -key CH0")), QStringLiteral("FAST"));
    QCOMPARE(project.run(QStringLiteral("undo; zel_setting -id 10 -key CH0")), QStringLiteral("SLOW"));
}

ZEL_TEST_MAIN(TestDesignEditing)
#include "tst_designediting.moc"
