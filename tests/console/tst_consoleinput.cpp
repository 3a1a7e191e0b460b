// SPDX-License-Identifier: MIT
#include "host/console/consoleinput.h"
#include "tests/support/testmain.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

using namespace mirn::zelchip;

class ConsoleInputTest final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void entersWhatIsComplete();
    void continuesWhatIsIncomplete();
    void growsUpToSomeLines();
    void walksFromTheFirstAndLastLine();
    void historyKeepsWhatIsWorthIt();
    void escapeEmpties();
    void aRunningScriptHoldsEverythingUp();
    void tabCompletes();
    void secondTabAsksForTheCandidates();
    void givesItsTextToTheLetter();

private:
    void type(const QString& text) { QTest::keyClicks(m_input.get(), text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_input.get(), key, modifiers);
    }
    void press(std::initializer_list<Qt::Key> keys)
    {
        for (Qt::Key key : keys)
            press(key);
    }

    std::unique_ptr<ConsoleInput> m_input;
    QStringList m_entered;
};

void ConsoleInputTest::init()
{
    Test::init();
    m_entered.clear();
    m_input = std::make_unique<ConsoleInput>(nullptr);
    connect(m_input.get(), &ConsoleInput::entered, this, [this](const QString& script) { m_entered.append(script); });
    m_input->resize(400, 30);
    m_input->show();
}

void ConsoleInputTest::cleanup()
{
    m_input.reset();
    Test::cleanup();
}

void ConsoleInputTest::entersWhatIsComplete()
{
    for (const char* typed : {"puts a", "if 1 {puts b}", "", "  "}) { // the last two are nothing
        type(typed);
        press(Qt::Key_Return);
        QCOMPARE(m_input->script(), QString());
    }
    QCOMPARE(m_entered, QStringList({"puts a", "if 1 {puts b}"}));
    QCOMPARE(m_input->history().entries(), m_entered);
}

void ConsoleInputTest::continuesWhatIsIncomplete()
{
    type("foreach a b {");
    press(Qt::Key_Return);
    type("puts $a");
    press(Qt::Key_Enter, Qt::KeypadModifier);
    type("}");
    press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(m_entered, QStringList());
    type("puts c");
    press(Qt::Key_Return);
    QCOMPARE(m_entered, QStringList{"foreach a b {\nputs $a\n}\nputs c"});
}

void ConsoleInputTest::growsUpToSomeLines()
{
    const int oneLine = m_input->height();
    int before = 0;
    for (int lines = 1; lines <= 8; ++lines) {
        QTRY_VERIFY(m_input->height() > before);
        QCOMPARE(m_input->verticalScrollBar()->maximum(), 0);
        before = m_input->height();
        press(Qt::Key_Return, Qt::ShiftModifier);
    }
    press(Qt::Key_Return, Qt::ShiftModifier);
    QCOMPARE(m_input->height(), before);
    press(Qt::Key_Escape);
    QTRY_COMPARE(m_input->height(), oneLine);
    type(QString(200, QLatin1Char('x'))); // more than is as wide as the input
    QTRY_VERIFY(m_input->height() > oneLine);
}

void ConsoleInputTest::walksFromTheFirstAndLastLine()
{
    m_input->history().setEntries({"oldest", "if 1 {\nb\n}", "newest"});
    type("unfinished");
    press(Qt::Key_Up);
    QCOMPARE(m_input->script(), "newest");
    press({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up});
    QCOMPARE(m_input->script(), "oldest");
    press(Qt::Key_Down);
    QCOMPARE(m_input->script(), "if 1 {\nb\n}");
    press(Qt::Key_Up); // to the second line
    type("!");
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Up});
    QCOMPARE(m_input->script(), "if 1 {\nb!\n}"); // as it was edited
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
    QCOMPARE(m_input->script(), "unfinished");
    press({Qt::Key_Return, Qt::Key_Up}); // walks from the newest again
    QCOMPARE(m_input->script(), "unfinished");
    QCOMPARE(m_input->history().entries(), QStringList({"oldest", "if 1 {\nb\n}", "newest", "unfinished"}));
}

// Neither blank ones nor equal ones in a row, and only the newest.
void ConsoleInputTest::historyKeepsWhatIsWorthIt()
{
    const QStringList added{"a", "a", "", "b", " \n\t", "b", "c", "a", "d"};
    CommandHistory history(3);
    for (const QString& script : added)
        history.add(script);
    QCOMPARE(history.entries(), QStringList({"c", "a", "d"}));
    history.setEntries(added.mid(0, 6));
    QCOMPARE(history.entries(), QStringList({"a", "b"}));
}

// Before a shortcut of the window, and it can be undone.
void ConsoleInputTest::escapeEmpties()
{
    const auto isTaken = [this] {
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(m_input.get(), &event);
        return event.isAccepted();
    };
    QVERIFY(!isTaken());
    type("puts a");
    QVERIFY(isTaken());
    press(Qt::Key_Escape);
    QCOMPARE(m_input->script(), QString());
    m_input->undo();
    QCOMPARE(m_input->script(), "puts a");
}

void ConsoleInputTest::aRunningScriptHoldsEverythingUp()
{
    QSignalSpy cancelled(m_input.get(), &ConsoleInput::cancelRequested);
    m_input->setCompleter([](const QString&) { return Completion{{"x"}, 0, "completed"}; });
    type("puts a");
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(cancelled.count(), 0);
    m_input->setRunning(true);
    press({Qt::Key_Return, Qt::Key_Tab});
    QCOMPARE(m_entered, QStringList());
    QCOMPARE(m_input->script(), "puts a");
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(cancelled.count(), 1);
    m_input->selectAll(); // so it copies
    press(Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(cancelled.count(), 1);
    m_input->moveCursor(QTextCursor::End);
    m_input->setRunning(false);
    press(Qt::Key_Return);
    QCOMPARE(m_entered, QStringList{"puts a"});
}

void ConsoleInputTest::tabCompletes()
{
    QString asked;
    m_input->setCompleter([&](const QString& before) {
        asked = before;
        return Completion{{"place"}, 4, "place "};
    });
    type("zel pl -id 3");
    press({Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left});
    press(Qt::Key_Tab);
    QCOMPARE(asked, "zel pl");
    QCOMPARE(m_input->script(), "zel place -id 3"); // with one blank
    type("d");
    QCOMPARE(m_input->script(), "zel placed -id 3");
}

void ConsoleInputTest::secondTabAsksForTheCandidates()
{
    QSignalSpy found(m_input.get(), &ConsoleInput::candidatesFound);
    m_input->setCompleter([](const QString&) { return Completion{{"foreach", "format"}, 0, "fo"}; });
    type("f");
    press(Qt::Key_Tab);
    QCOMPARE(m_input->script(), "fo");
    QCOMPARE(found.count(), 0);
    press(Qt::Key_Tab);
    QCOMPARE(found.value(0).value(0).toStringList(), QStringList({"foreach", "format"}));
    m_input->setCompleter([](const QString& before) { return Completion{{}, 0, before}; });
    press({Qt::Key_Tab, Qt::Key_Tab});
    QCOMPARE(found.count(), 1);
    QCOMPARE(m_input->script(), "fo");
}

void ConsoleInputTest::givesItsTextToTheLetter()
{
    const QString text = QString::fromUtf8("a\xc2\xa0 b \xf0\x9f\x94\xa7 <b>\tc");
    m_input->insertPlainText(text);
    press(Qt::Key_Return);
    QCOMPARE(m_entered, QStringList{text});
}

ZEL_TEST_MAIN(ConsoleInputTest)
#include "tst_consoleinput.moc"
