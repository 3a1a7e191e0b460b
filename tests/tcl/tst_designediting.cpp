// SPDX-License-Identifier: MIT
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTest>
#include <QTimer>

#include <csignal>

#include <sys/resource.h>

using namespace mirn::zelchip;
using zeltest::EachKind;
using zeltest::EditedProject;

namespace {

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

} // namespace

class TestDesignEditing : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void undoAndRedoStepThroughEveryChange();
    void removedJournalIsAnError();
    void linksAreReadAndReplaced();
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

// What they lead to is somebody else's.
void TestDesignEditing::linksAreReadAndReplaced()
{
    EditedProject project;
    project.run(EachKind.first());
    const QString placement = project.editor().placementFile();
    const QString journal = project.journalFile();
    const QString outside = project.directory() + QStringLiteral("/outside-");
    QCOMPARE(project.editor().save(), QString());
    project.run(EachKind[1]);
    const QString state = project.state();
    for (const QString& file : {placement, journal}) {
        QVERIFY(QFile::rename(file, outside + QFileInfo(file).baseName()));
        QVERIFY(QFile::link(outside + QFileInfo(file).baseName(), file));
    }
    const QByteArray saved = zeltest::contentOf(placement);
    const QByteArray kept = zeltest::contentOf(journal);
    project.open();
    QCOMPARE(project.state(), state);
    QCOMPARE(project.run(EachKind[2]), QString());
    QVERIFY(!QFileInfo(journal).isSymLink() && QFileInfo(placement).isSymLink());
    QCOMPARE(project.editor().save(), QString());
    QVERIFY(!QFileInfo(placement).isSymLink());
    const QString after = project.state();
    project.open();
    QCOMPARE(project.state(), after);
    QCOMPARE(zeltest::contentOf(outside + QStringLiteral("placement")), saved);
    QCOMPARE(zeltest::contentOf(outside + QStringLiteral("journal")), kept);
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
