// SPDX-License-Identifier: MIT
#include "host/console/consolecolors.h"
#include "host/console/consoledock.h"
#include "host/console/consoleinput.h"
#include "host/console/consoleoutput.h"
#include "host/console/tclcompletion.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextDocumentFragment>
#include <QToolButton>

using namespace mirn::zelchip;
using Channel = TclInterpreter::Channel;
using Origin = ConsoleDock::Origin;

namespace {

TclCompletion completionWith(const QStringList& resources)
{
    const QStringList commands{"foreach", "format", "puts", "zel_project", "zel_resource", "zel_setting"};
    const QStringList sites{"DCU0", "DCU1", "my site"};
    return TclCompletion([=] { return commands; }, [=] { return resources; }, [=] { return sites; });
}

} // namespace

// The console's dock with its output and its input, and the completion of commands.
class TestConsole final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        Test::init();
        m_dock = std::make_unique<ConsoleDock>(nullptr);
        m_dock->resize(900, 260);
        m_dock->show();
        m_entered.clear();
        connect(m_dock.get(), &ConsoleDock::commandEntered, this,
            [this](const QString& script) { m_entered.append(script); });
    }

    void cleanup()
    {
        m_dock.reset();
        Test::cleanup();
    }

    void piecesContinueTheirLine()
    {
        m_dock->showOutput("a");
        m_dock->showOutput("b\n\nc");
        m_dock->showOutput("warning", Channel::Error);
        m_dock->showOutput("d");
        QCoreApplication::processEvents();
        m_dock->showOutput("e\n");
        m_dock->showOutput("f");
        m_dock->showResult("result\n");
        m_dock->showOutput("g");
        m_dock->showError(QString());
        QCOMPARE(lines(), QStringList({"ab", "", "c", "warning", "de", "f", "result", "g"}));
    }

    void showsTextAsItIs_data()
    {
        const Rows<QString, QString> row;
        row("HTML", "<img src=\"x\"><b>bold</b>&amp;", "<img src=\"x\"><b>bold</b>&amp;");
        row("non-ASCII", u8"\u00e4\u6f22\u5b57\U0001f527", u8"\u00e4\u6f22\u5b57\U0001f527");
        row("control characters", u8"a\x1b[31m\rb\x07\tc", u8"a\u241b[31m\u240db\u2407\tc");
        row("ends of paragraphs", u8"a\u2029b\u2028c", u8"a\ufffdb\ufffdc");
        row("foreign line ends", "a\r\nb\r\n", "a\nb");
    }

    void showsTextAsItIs()
    {
        const auto [text, shown] = row<QString, QString>();
        m_dock->showError(text);
        QCOMPARE(output()->toPlainText(), shown);
        output()->clearAll();
        m_dock->showOutput(text);
        QCoreApplication::processEvents();
        QCOMPARE(output()->toPlainText(), shown);
    }

    void hugeTextsAreCut()
    {
        const auto isFirstLineCut = [this] {
            const QString line = lines().first();
            return line.endsWith(" \u2026 (line cut)") && line.size() < ConsoleOutput::LongestLine + 20;
        };
        m_dock->showResult(QString(1'000'000, 'x'));
        QVERIFY(lines().size() == 2 && isFirstLineCut());
        QVERIFY(lines().last().contains("more characters left out"));
        output()->clearAll();
        for (int i = 0; i < 3; ++i) {
            m_dock->showOutput(QString(ConsoleOutput::LongestLine, 'y'));
            QCoreApplication::processEvents();
        }
        m_dock->showOutput("\nnext");
        QCoreApplication::processEvents();
        QVERIFY(lines().size() == 2 && isFirstLineCut());
        QCOMPARE(lines().last(), "next");
    }

    void keepsABoundedNumberOfLinesAndCharacters()
    {
        for (int i = 0; i < ConsoleOutput::MostLines + 10; ++i)
            m_dock->showOutput(QString::number(i) + '\n');
        QCoreApplication::processEvents();
        QCOMPARE(lines().size(), ConsoleOutput::MostLines);
        QCOMPARE(lines().last(), QString::number(ConsoleOutput::MostLines + 9));
        QCOMPARE(output()->verticalScrollBar()->value(), output()->verticalScrollBar()->maximum());
        output()->clearAll();
        const QString line(ConsoleOutput::LongestLine - 100, ' ');
        for (int i = 0; i < 450; ++i)
            m_dock->showResult(line);
        m_dock->showResult("last");
        QVERIFY(output()->document()->characterCount() <= ConsoleOutput::MostCharacters);
        QVERIFY(output()->document()->characterCount() > ConsoleOutput::MostCharacters / 2);
        QCOMPARE(output()->document()->lastBlock().text(), "last");
    }

    void colorsAreLegible()
    {
        for (const char* name : {"#ffffff", "#f2f3f5", "#1e2023", "#000000", "#777777", "#c41e1e", "#2f6db0"}) {
            const QColor base{QLatin1String(name)};
            QPalette palette;
            palette.setColor(QPalette::Base, base);
            palette.setColor(QPalette::Text, base.lightness() > 128 ? Qt::black : Qt::white);
            const ConsoleColors colors(palette);
            for (const QColor& color : {colors.error, colors.accent, colors.muted})
                QVERIFY2(contrast(color, base) > 4.4, qPrintable(color.name() + " on " + name));
        }
    }

    void colorsFollowThePalette()
    {
        m_dock->showResult(QString());
        m_dock->showOutput("plain\n");
        m_dock->showError("failed");
        const QColor onLight = colorOfLine(1);
        QVERIFY(onLight.red() > 2 * onLight.green());
        QPalette dark = m_dock->palette();
        dark.setColor(QPalette::Base, Qt::black);
        m_dock->setPalette(dark);
        QVERIFY(colorOfLine(1).lightness() > onLight.lightness());
        QCOMPARE(colorOfLine(1), ConsoleColors(dark).error);
    }

    void originsAreToldApart()
    {
        const auto picture = [this](Origin origin) {
            output()->clearAll();
            m_dock->showCommand("undo", origin);
            return output()->grab(QRect(0, 0, output()->gutterWidth(), 20)).toImage();
        };
        const QImage empty = output()->grab(QRect(0, 0, output()->gutterWidth(), 20)).toImage();
        const QImage user = picture(Origin::User);
        const QImage view = picture(Origin::View);
        QVERIFY(user != empty);
        QVERIFY(view != empty);
        QVERIFY(view != user);
        QCOMPARE(lines(), QStringList{"undo"});
    }

    void copiesNothingButTheText()
    {
        QVERIFY(!action("copy")->isEnabled());
        m_dock->showCommand("foreach a b {\n}", Origin::User);
        m_dock->showError("a\u00a0b");
        action("selectAll")->trigger();
        action("copy")->trigger();
        const QMimeData* copied = QApplication::clipboard()->mimeData();
        QCOMPARE(copied->text(), "foreach a b {\n}\na\u00a0b");
        QVERIFY(!copied->hasHtml());
    }

    void aSelectionDoesNotGrow()
    {
        m_dock->showResult("first");
        m_dock->showResult("second");
        output()->selectAll();
        m_dock->showResult("third");
        QCOMPARE(output()->textCursor().selection().toPlainText(), "first\nsecond");
    }

    void staysWhereTheUserScrolledTo()
    {
        for (int i = 0; i < 100; ++i)
            m_dock->showResult(QString::number(i));
        output()->verticalScrollBar()->setValue(20);
        m_dock->showResult("more");
        QCOMPARE(output()->verticalScrollBar()->value(), 20);
    }

    // Whatever changes the room for the output: the input that grows and shrinks, the window, and being hidden.
    void endStaysInSight()
    {
        QScrollBar* bar = output()->verticalScrollBar();
        const auto isAtEnd = [bar] {
            QCoreApplication::processEvents();
            return bar->maximum() > 0 && bar->value() == bar->maximum();
        };
        for (int i = 0; i < 100; ++i)
            m_dock->showResult(QString::number(i) + QString(i % 7 * 30, 'x')); // some need several lines
        QVERIFY(isAtEnd());
        QTest::keyClicks(input(), "if 1 {");
        for (int line = 0; line < 6; ++line)
            QTest::keyClick(input(), Qt::Key_Return);
        QVERIFY(isAtEnd());
        QTest::keyClicks(input(), "}");
        QTest::keyClick(input(), Qt::Key_Return);
        m_dock->showCommand("if 1 {\n\n\n\n\n\n}", Origin::User);
        QVERIFY(isAtEnd());
        for (const QSize& size : {QSize(900, 160), QSize(300, 160), QSize(300, 400), QSize(1200, 200)}) {
            m_dock->resize(size);
            QVERIFY(isAtEnd());
        }
        m_dock->hide();
        m_dock->showResult("unseen");
        m_dock->resize(500, 180);
        m_dock->show();
        QVERIFY(isAtEnd());
        bar->setValue(bar->maximum() / 2); // the user looks at something
        m_dock->resize(500, 150);
        m_dock->showResult("more");
        QVERIFY(!isAtEnd());
        bar->setValue(bar->maximum());
        m_dock->resize(500, 120);
        QVERIFY(isAtEnd());
    }

    void clears()
    {
        m_dock->showError("failed");
        m_dock->showOutput("pending");
        action("clear")->trigger();
        QCoreApplication::processEvents();
        QCOMPARE(output()->toPlainText(), QString());
        m_dock->showResult("next");
        QCOMPARE(lines(), QStringList{"next"});
    }

    void listsCandidatesInColumns()
    {
        QStringList names;
        for (int i = 0; i < 300; ++i)
            names.append(QString("top/cell%1").arg(i, 3, 10, QChar('0')));
        m_dock->setCompleter([names](const QString& before) { return Completion{names, 0, before}; });
        QTest::keyClicks(input(), "top");
        QTest::keyClick(input(), Qt::Key_Tab);
        QCOMPARE(output()->toPlainText(), QString());
        QTest::keyClick(input(), Qt::Key_Tab);
        QVERIFY(lines().first().startsWith("top/cell000  top/cell001  "));
        QVERIFY(lines().size() < 50);
        QCOMPARE(lines().last(), "and 100 more");
    }

    void entersWhatIsComplete()
    {
        for (const char* typed : {"puts a", "if 1 {puts b}", "", "  "}) { // the last two are nothing
            type(typed);
            press(Qt::Key_Return);
            QCOMPARE(input()->script(), QString());
        }
        QCOMPARE(m_entered, QStringList({"puts a", "if 1 {puts b}"}));
        QCOMPARE(m_dock->history(), m_entered);
    }

    void continuesWhatIsIncomplete()
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

    void growsUpToSomeLines()
    {
        const int oneLine = input()->height();
        int before = 0;
        for (int lines = 1; lines <= 8; ++lines) {
            QTRY_VERIFY(input()->height() > before);
            QCOMPARE(input()->verticalScrollBar()->maximum(), 0);
            before = input()->height();
            press(Qt::Key_Return, Qt::ShiftModifier);
        }
        press(Qt::Key_Return, Qt::ShiftModifier);
        QCOMPARE(input()->height(), before);
        press(Qt::Key_Escape);
        QTRY_COMPARE(input()->height(), oneLine);
        type(QString(200, 'x')); // more than is as wide as the input
        QTRY_VERIFY(input()->height() > oneLine);
    }

    void walksFromTheFirstAndLastLine()
    {
        m_dock->setHistory({"oldest", "if 1 {\nb\n}", "newest"});
        type("unfinished");
        press(Qt::Key_Up);
        QCOMPARE(input()->script(), "newest");
        press({Qt::Key_Up, Qt::Key_Up, Qt::Key_Up});
        QCOMPARE(input()->script(), "oldest");
        press(Qt::Key_Down);
        QCOMPARE(input()->script(), "if 1 {\nb\n}");
        press(Qt::Key_Up); // to the second line
        type("!");
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Up});
        QCOMPARE(input()->script(), "if 1 {\nb!\n}"); // as it was edited
        press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
        QCOMPARE(input()->script(), "unfinished");
        press({Qt::Key_Return, Qt::Key_Up}); // walks from the newest again
        QCOMPARE(input()->script(), "unfinished");
        QCOMPARE(m_dock->history(), QStringList({"oldest", "if 1 {\nb\n}", "newest", "unfinished"}));
    }

    // Neither blank ones nor equal ones in a row, and only the newest.
    void historyKeepsWhatIsWorthIt()
    {
        const QStringList added{"a", "a", "", "b", " \n\t", "b", "c", "a", "d"};
        CommandHistory history(3);
        for (const QString& script : added)
            history.add(script);
        QCOMPARE(history.entries(), QStringList({"c", "a", "d"}));
        history.setEntries(added.mid(0, 6));
        QCOMPARE(history.entries(), QStringList({"a", "b"}));
    }

    // Before a shortcut of the window, and the text can be brought back.
    void escapeEmpties()
    {
        const auto isTaken = [this] {
            QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_Escape, Qt::NoModifier);
            event.ignore();
            QCoreApplication::sendEvent(input(), &event);
            return event.isAccepted();
        };
        QVERIFY(!isTaken());
        type("puts a");
        QVERIFY(isTaken());
        press(Qt::Key_Escape);
        QCOMPARE(input()->script(), QString());
        press(Qt::Key_Up);
        QCOMPARE(input()->script(), "puts a");
    }

    void aRunningScriptHoldsEverythingUp()
    {
        QSignalSpy cancelled(m_dock.get(), &ConsoleDock::cancelRequested);
        auto* stop = m_dock->findChild<QToolButton*>("stop");
        m_dock->setCompleter([](const QString&) { return Completion{{"x"}, 0, "completed"}; });
        type("puts a");
        press(Qt::Key_C, Qt::ControlModifier);
        QVERIFY(cancelled.isEmpty() && !stop->isVisible());
        m_dock->setRunning(true);
        press({Qt::Key_Return, Qt::Key_Tab});
        QCOMPARE(m_entered, QStringList());
        QCOMPARE(input()->script(), "puts a");
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(cancelled.count(), 1);
        input()->selectAll(); // so it copies
        press(Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(cancelled.count(), 1);
        QVERIFY(stop->isVisible());
        stop->click();
        QCOMPARE(cancelled.count(), 2);
        input()->moveCursor(QTextCursor::End);
        m_dock->setRunning(false);
        QVERIFY(!stop->isVisible());
        press(Qt::Key_Return);
        QCOMPARE(m_entered, QStringList{"puts a"});
    }

    void tabCompletes()
    {
        QString asked;
        input()->setCompleter([&](const QString& before) {
            asked = before;
            return Completion{{"place"}, 4, "place "};
        });
        type("zel pl -id 3");
        press({Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left, Qt::Key_Left});
        press(Qt::Key_Tab);
        QCOMPARE(asked, "zel pl");
        QCOMPARE(input()->script(), "zel place -id 3"); // with one blank
        type("d");
        QCOMPARE(input()->script(), "zel placed -id 3");
    }

    void secondTabAsksForTheCandidates()
    {
        QSignalSpy found(input(), &ConsoleInput::candidatesFound);
        input()->setCompleter([](const QString&) { return Completion{{"foreach", "format"}, 0, "fo"}; });
        type("f");
        press(Qt::Key_Tab);
        QCOMPARE(input()->script(), "fo");
        QCOMPARE(found.count(), 0);
        press(Qt::Key_Tab);
        QCOMPARE(found.value(0).value(0).toStringList(), QStringList({"foreach", "format"}));
        input()->setCompleter([](const QString& before) { return Completion{{}, 0, before}; });
        press({Qt::Key_Tab, Qt::Key_Tab});
        QCOMPARE(found.count(), 1);
        QCOMPARE(input()->script(), "fo");
    }

    void entersItsTextToTheLetter()
    {
        const QString text = QString::fromUtf8("a\xc2\xa0 b \xf0\x9f\x94\xa7 <b>\tc");
        input()->insertPlainText(text);
        press(Qt::Key_Return);
        QCOMPARE(m_entered, QStringList{text});
    }

    void completes_data()
    {
        const Rows<QString, QString, QString> row;
        row("a command", "pu", "puts ", "puts");
        row("what several commands have in common", "zel", "zel_", "zel_project|zel_resource|zel_setting");
        row("nothing more in common", "for", "for", "foreach|format");
        row("nothing that fits", "xyz", "xyz", "");
        row("a command behind a semicolon", "puts a; pu", "puts a; puts ", "puts");
        row("a command on the next line", "puts a\npu", "puts a\nputs ", "puts");
        row("a command in brackets", "puts [fore", "puts [foreach ", "foreach");
        row("a command in quoted brackets", "puts \"a [fore", "puts \"a [foreach ", "foreach");
        row("a command in a body", "foreach a {b c} {\n pu", "foreach a {b c} {\n puts ", "puts");
        row("behind closed brackets", "zel_resource get [format a] -i", "zel_resource get [format a] -ip ", "-ip");
        row("behind an escaped line's end", "zel_resource \\\n pl", "zel_resource \\\n place ", "place");
        row("no command among arguments", "puts pu", "puts pu", "");
        row("a subcommand", "zel_resource pl", "zel_resource place ", "place");
        row("subcommands", "zel_resource re", "zel_resource re", "reset|remove|restore");
        row("all subcommands", "zel_tree ", "zel_tree ", "where|expand|collapse|select");
        row("options", "zel_resource place ", "zel_resource place -", "-rsc|-id|-auto|-from");
        row("options of the form that a flag chooses", "zel_resource place -auto ", "zel_resource place -auto -",
            "-rsc|-seconds|-partial");
        row("the flag that a form needs", "zel_resource place -partial ", "zel_resource place -partial -auto ",
            "-auto");
        row("options of a command without subcommands", "zel_setting -", "zel_setting -", "-id|-key|-value");
        row("options that are left", "zel_resource place -id 3 ", "zel_resource place -id 3 -rsc ", "-rsc");
        row("no option where its value is due", "zel_setting -key ", "zel_setting -key ", "");
        row("a mode", "zel_view mode z", "zel_view mode zoom ", "zoom");
        row("one mode only", "zel_view mode zoom ", "zel_view mode zoom ", "");
        row("a site", "zel_setting -id D", "zel_setting -id DCU", "DCU0|DCU1");
        row("a site to its end", "zel_resource place -id DCU1", "zel_resource place -id DCU1 ", "DCU1");
        row("a site with a blank", "zel_view where -id {my", "zel_view where -id {my site} ", "my site");
        row("one more site", "zel_view zoom DCU0 m", "zel_view zoom DCU0 {my site} ", "my site");
        row("a command to explain", "help zel_p", "help zel_project ", "zel_project");
        row("a subcommand to explain", "help zel_project inf", "help zel_project info ", "info");
        row("a resource", "zel_resource place -rsc to", "zel_resource place -rsc top/", "top/a|top/b 1|top/b 2");
        row("a resource to its end", "zel_resource get -ip top/a", "zel_resource get -ip top/a ", "top/a");
        row("a resource with a blank", "zel_resource get -ip {top/b 1", "zel_resource get -ip {top/b 1} ", "top/b 1");
        row("resources with a blank", "zel_tree where -rsc top/b", "zel_tree where -rsc {top/b ", "top/b 1|top/b 2");
        row("a resource in quotes", "zel_tree where -rsc \"top/b 2", "zel_tree where -rsc {top/b 2} ", "top/b 2");
        row("a resource in a body", "foreach a b {zel_resource get -ip {top/b 1",
            "foreach a b {zel_resource get -ip {top/b 1} ", "top/b 1");
        row("resources not for braces", "zel_resource get -ip o", "zel_resource get -ip odd\\{\\ ", "odd{ 1|odd{ 2");
        row("behind a backslash", "zel_resource get -ip odd\\{", "zel_resource get -ip odd\\{\\ ", "odd{ 1|odd{ 2");
        row("a resource outside the basic characters", "zel_resource get -ip \xc3\xa4",
            "zel_resource get -ip \xc3\xa4/\xf0\x9f\x94\xa7 ", "\xc3\xa4/\xf0\x9f\x94\xa7");
        row("no half characters", "zel_resource get -ip p", "zel_resource get -ip p/",
            "p/\xf0\x9f\x94\xa7|p/\xf0\x9f\x94\xa8");
        row("resources of other commands are unknown", "puts -rsc to", "puts -rsc to", "");
    }

    void completes()
    {
        const auto [before, after, candidates] = row<QString, QString, QString>();
        const QStringList resources{"top/a", "top/b 1", "top/b 2", "odd{ 1", "odd{ 2",
            QString::fromUtf8("\xc3\xa4/\xf0\x9f\x94\xa7"), QString::fromUtf8("p/\xf0\x9f\x94\xa7"),
            QString::fromUtf8("p/\xf0\x9f\x94\xa8")};
        const Completion completion = completionWith(resources)(before);
        QCOMPARE(completion.candidates.join('|'), candidates);
        QCOMPARE(before.left(completion.start) + completion.text, after);
    }

    void namesAreOneWordForTcl()
    {
        TclInterpreter interpreter; // Tcl makes lists only once it runs
        for (const QString resource :
            {"u 0", "lane[0]", "$cost", "50%2", "say \"hi\"", "open{", "close}", "back\\", "#1", "a;b"}) {
            const Completion completion = completionWith({resource})("zel_resource get -ip ");
            QCOMPARE(interpreter.evaluate("set name " + completion.text).text, resource);
        }
    }

private:
    void type(const QString& text) { QTest::keyClicks(input(), text); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(input(), key, modifiers);
    }
    void press(std::initializer_list<Qt::Key> keys)
    {
        for (Qt::Key key : keys)
            press(key);
    }

    [[nodiscard]] QStringList lines() const { return output()->toPlainText().split('\n'); }
    [[nodiscard]] ConsoleOutput* output() const { return m_dock->findChild<ConsoleOutput*>(); }
    [[nodiscard]] ConsoleInput* input() const { return m_dock->findChild<ConsoleInput*>(); }
    [[nodiscard]] QAction* action(const char* name) const { return output()->findChild<QAction*>(QLatin1String(name)); }
    [[nodiscard]] QColor colorOfLine(int line) const
    {
        QTextCursor cursor(output()->document()->findBlockByNumber(line));
        cursor.movePosition(QTextCursor::EndOfBlock);
        return cursor.charFormat().foreground().color();
    }

    std::unique_ptr<ConsoleDock> m_dock;
    QStringList m_entered;
};

ZEL_TEST_MAIN(TestConsole)
#include "tst_console.moc"
