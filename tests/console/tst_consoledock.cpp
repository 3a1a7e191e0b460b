// SPDX-License-Identifier: MIT
#include "host/console/consolecolors.h"
#include "host/console/consoledock.h"
#include "host/console/consoleinput.h"
#include "host/console/consoleoutput.h"
#include "tests/support/rows.h"
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

class ConsoleDockTest final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void piecesContinueTheirLine();
    void showsTextAsItIs_data();
    void showsTextAsItIs();
    void hugeTextsAreCut();
    void keepsABoundedNumberOfLines();
    void keepsABoundedNumberOfCharacters();
    void colorsAreLegible();
    void colorsFollowThePalette();
    void originsAreToldApart();
    void copiesNothingButTheText();
    void aSelectionDoesNotGrow();
    void staysWhereTheUserScrolledTo();
    void clears();
    void stopIsThereWhileAScriptRuns();
    void listsCandidatesInColumns();
    void takesWhatTheInputEnters();

private:
    [[nodiscard]] QStringList lines() const { return output()->toPlainText().split(QLatin1Char('\n')); }
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
};

void ConsoleDockTest::init()
{
    Test::init();
    m_dock = std::make_unique<ConsoleDock>(nullptr);
    m_dock->resize(900, 260);
    m_dock->show();
}

void ConsoleDockTest::cleanup()
{
    m_dock.reset();
    Test::cleanup();
}

void ConsoleDockTest::piecesContinueTheirLine()
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

void ConsoleDockTest::showsTextAsItIs_data()
{
    zeltest::addRows({
        {"HTML", "<img src=\"x\"><b>bold</b>&amp;", "<img src=\"x\"><b>bold</b>&amp;"},
        {"non-ASCII", u8"\u00e4\u6f22\u5b57\U0001f527", u8"\u00e4\u6f22\u5b57\U0001f527"},
        {"control characters", u8"a\x1b[31m\rb\x07\tc", u8"a\u241b[31m\u240db\u2407\tc"},
        {"ends of paragraphs", u8"a\u2029b\u2028c", u8"a\ufffdb\ufffdc"},
        {"foreign line ends", "a\r\nb\r\n", "a\nb"},
    });
}

void ConsoleDockTest::showsTextAsItIs()
{
    const auto [text, shown] = zeltest::currentRow<2>();
    m_dock->showError(text);
    QCOMPARE(output()->toPlainText(), shown);
    output()->clearAll();
    m_dock->showOutput(text);
    QCoreApplication::processEvents();
    QCOMPARE(output()->toPlainText(), shown);
}

void ConsoleDockTest::hugeTextsAreCut()
{
    m_dock->showResult(QString(1'000'000, QLatin1Char('x')));
    QCOMPARE(lines().size(), 2);
    QVERIFY(lines().first().endsWith("x \u2026 (line cut)"));
    QVERIFY(lines().first().size() < ConsoleOutput::LongestLine + 20);
    QVERIFY(lines().last().contains("more characters left out"));
    output()->clearAll();
    for (int i = 0; i < 3; ++i) {
        m_dock->showOutput(QString(ConsoleOutput::LongestLine, QLatin1Char('y')));
        QCoreApplication::processEvents();
    }
    m_dock->showOutput("\nnext");
    QCoreApplication::processEvents();
    QCOMPARE(lines().size(), 2);
    QVERIFY(lines().first().endsWith("y \u2026 (line cut)"));
    QVERIFY(lines().first().size() < ConsoleOutput::LongestLine + 20);
    QCOMPARE(lines().last(), "next");
}

void ConsoleDockTest::keepsABoundedNumberOfLines()
{
    for (int i = 0; i < ConsoleOutput::MostLines + 10; ++i)
        m_dock->showOutput(QString::number(i) + QLatin1Char('\n'));
    QCoreApplication::processEvents();
    QCOMPARE(lines().size(), ConsoleOutput::MostLines);
    QCOMPARE(lines().last(), QString::number(ConsoleOutput::MostLines + 9));
    QCOMPARE(output()->verticalScrollBar()->value(), output()->verticalScrollBar()->maximum());
}

void ConsoleDockTest::keepsABoundedNumberOfCharacters()
{
    const QString line(ConsoleOutput::LongestLine - 100, QLatin1Char(' '));
    for (int i = 0; i < 450; ++i)
        m_dock->showResult(line);
    m_dock->showResult("last");
    QVERIFY(output()->document()->characterCount() <= ConsoleOutput::MostCharacters);
    QVERIFY(output()->document()->characterCount() > ConsoleOutput::MostCharacters / 2);
    QCOMPARE(output()->document()->lastBlock().text(), "last");
}

void ConsoleDockTest::colorsAreLegible()
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

void ConsoleDockTest::colorsFollowThePalette()
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

void ConsoleDockTest::originsAreToldApart()
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

void ConsoleDockTest::copiesNothingButTheText()
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

void ConsoleDockTest::aSelectionDoesNotGrow()
{
    m_dock->showResult("first");
    m_dock->showResult("second");
    output()->selectAll();
    m_dock->showResult("third");
    QCOMPARE(output()->textCursor().selection().toPlainText(), "first\nsecond");
}

void ConsoleDockTest::staysWhereTheUserScrolledTo()
{
    for (int i = 0; i < 100; ++i)
        m_dock->showResult(QString::number(i));
    output()->verticalScrollBar()->setValue(20);
    m_dock->showResult("more");
    QCOMPARE(output()->verticalScrollBar()->value(), 20);
}

void ConsoleDockTest::clears()
{
    m_dock->showError("failed");
    m_dock->showOutput("pending");
    action("clear")->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(output()->toPlainText(), QString());
    m_dock->showResult("next");
    QCOMPARE(lines(), QStringList{"next"});
}

void ConsoleDockTest::stopIsThereWhileAScriptRuns()
{
    QSignalSpy cancelled(m_dock.get(), &ConsoleDock::cancelRequested);
    auto* stop = m_dock->findChild<QToolButton*>(QStringLiteral("stop"));
    QVERIFY(!stop->isVisible());
    m_dock->setRunning(true);
    QVERIFY(stop->isVisible());
    stop->click();
    QTest::keyClick(input(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(cancelled.count(), 2);
    m_dock->setRunning(false);
    QVERIFY(!stop->isVisible());
}

void ConsoleDockTest::listsCandidatesInColumns()
{
    QStringList names;
    for (int i = 0; i < 300; ++i)
        names.append(QStringLiteral("top/cell%1").arg(i, 3, 10, QLatin1Char('0')));
    m_dock->setCompleter([names](const QString& before) { return Completion{names, 0, before}; });
    QTest::keyClick(input(), Qt::Key_Tab);
    QCOMPARE(output()->toPlainText(), QString());
    QTest::keyClick(input(), Qt::Key_Tab);
    QVERIFY(lines().first().startsWith("top/cell000  top/cell001  "));
    QVERIFY(lines().size() < 50);
    QCOMPARE(lines().last(), "and 100 more");
}

void ConsoleDockTest::takesWhatTheInputEnters()
{
    QSignalSpy entered(m_dock.get(), &ConsoleDock::commandEntered);
    m_dock->setHistory({"undo", "undo", "redo"});
    QTest::keyClick(input(), Qt::Key_Up);
    QTest::keyClick(input(), Qt::Key_Up);
    QTest::keyClick(input(), Qt::Key_Return);
    QCOMPARE(entered.value(0).value(0).toString(), "undo");
    QCOMPARE(m_dock->history(), QStringList({"undo", "redo", "undo"}));
}

ZEL_TEST_MAIN(ConsoleDockTest)
#include "tst_consoledock.moc"
