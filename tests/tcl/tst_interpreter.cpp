// SPDX-License-Identifier: MIT
#include "host/tcl/arguments.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/support/testmain.h"

#include <QElapsedTimer>
#include <QTest>

using namespace mirn::zelchip;

class TestInterpreter : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void namesComeThroughBraces_data();
    void namesComeThroughBraces();
    void errorsAreTheCommandsOwn();
    void putsGoesToTheHost();
    void scriptsMayBeNested();
    void endlessScriptsCanBeCancelled_data();
    void endlessScriptsCanBeCancelled();
    void openBracesWantMore();
    void argumentsComplainInTclsWords_data();
    void argumentsComplainInTclsWords();
};

void TestInterpreter::namesComeThroughBraces_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blank") << "my ip";
    QTest::newRow("brackets and dollar") << "a[exit]$b";
    QTest::newRow("place holder and quotes") << "\"%2\"";
    QTest::newRow("a backslash inside") << "a\\nb";
    QTest::newRow("balanced braces") << "a{b}c";
    QTest::newRow("beyond ASCII") << QStringLiteral("k\u00e4fer\u00b5");
    QTest::newRow("a line end among much else") << "{a\n\\b} [c]\t$d\r\";";
    QTest::newRow("semicolon and hash") << "# a;b";
}

void TestInterpreter::namesComeThroughBraces()
{
    QFETCH(QString, name);
    TclInterpreter tcl;
    QStringList seen;
    tcl.addCommand(QStringLiteral("take"), [&](const QStringList& words) {
        seen = words;
        return TclResult::value(words.last());
    });
    const QStringList expected{QStringLiteral("take"), QStringLiteral("-rsc"), name};
    if (!name.contains(QLatin1Char('\n'))) {
        QCOMPARE(tcl.evaluate(QStringLiteral("take -rsc {") + name + QLatin1Char('}')).text, name);
        QCOMPARE(seen, expected);
        seen.clear();
    }
    QVERIFY(tcl.evaluate(TclInterpreter::list(expected)).isOk);
    QCOMPARE(seen, expected);
    QCOMPARE(TclInterpreter::words(TclInterpreter::list(expected)), expected);
    QVERIFY(!TclInterpreter::list(expected).contains(QLatin1Char('\n')));
}

void TestInterpreter::errorsAreTheCommandsOwn()
{
    TclInterpreter tcl;
    tcl.addCommand(QStringLiteral("fail"), [](const QStringList&) { return TclResult::error(QStringLiteral("no")); });
    QCOMPARE(tcl.evaluate(QStringLiteral("fail")).text, QStringLiteral("no"));
    QVERIFY(!tcl.evaluate(QStringLiteral("fail")).isOk);
    QVERIFY(tcl.errorTrace().contains(QStringLiteral("while executing")));
    QCOMPARE(tcl.evaluate(QStringLiteral("catch {fail} message; set message")).text, QStringLiteral("no"));
    QVERIFY(!tcl.evaluate(QStringLiteral("nosuchcommand")).isOk);
    QCOMPARE(tcl.evaluate(QStringLiteral("expr {6*7}")).text, QStringLiteral("42"));
    QVERIFY(!TclInterpreter::words(QStringLiteral("{open")));
    QVERIFY(!tcl.evaluate(QStringLiteral("break")).text.isEmpty());
}

void TestInterpreter::putsGoesToTheHost()
{
    TclInterpreter tcl;
    QStringList lines;
    tcl.setOutput([&](const QString& text, TclInterpreter::Channel channel) {
        lines.append((channel == TclInterpreter::Channel::Error ? QStringLiteral("E:") : QString()) + text);
    });
    tcl.evaluate(QStringLiteral("puts {a b}; puts -nonewline stdout c; puts stderr d"));
    QCOMPARE(lines, (QStringList{"a b\n", "c", "E:d\n"}));
    QVERIFY(!tcl.evaluate(QStringLiteral("puts nosuchchannel x")).isOk);
    QVERIFY(!tcl.evaluate(QStringLiteral("puts")).isOk);
    tcl.evaluate(QStringLiteral("rename puts say; say e"));
    QCOMPARE(lines.last(), QStringLiteral("e\n"));
    QVERIFY2(!tcl.evaluate(QStringLiteral("say nosuchchannel x")).text.contains(QStringLiteral("command")),
        qPrintable(tcl.evaluate(QStringLiteral("say nosuchchannel x")).text));
}

void TestInterpreter::scriptsMayBeNested()
{
    TclInterpreter tcl;
    tcl.addCommand(
        QStringLiteral("inner"), [&](const QStringList&) { return tcl.evaluate(QStringLiteral("error inside")); });
    QCOMPARE(tcl.evaluate(QStringLiteral("catch inner; set x 5")).text, QStringLiteral("5"));
    QVERIFY(!tcl.isRunning());
}

void TestInterpreter::endlessScriptsCanBeCancelled_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("a loop without a body") << "while 1 {}";
    QTest::newRow("a loop that catches everything") << "while 1 {catch {while 1 {incr i}}}";
    QTest::newRow("a wait for what never comes") << "vwait never";
    QTest::newRow("a long sleep") << "after 100000000";
    QTest::newRow("an endless recursion of short calls") << "proc p {} {after 1}; while 1 {p}";
}

void TestInterpreter::endlessScriptsCanBeCancelled()
{
    QFETCH(QString, script);
    TclInterpreter tcl;
    int calls = 0;
    tcl.setBusyHandler([&] {
        if (++calls == 3)
            tcl.cancel();
    });
    const TclResult result = tcl.evaluate(script);
    QVERIFY(!result.isOk);
    QCOMPARE(result.text, QStringLiteral("cancelled"));
    QCOMPARE(tcl.evaluate(QStringLiteral("expr 1+1")).text, QStringLiteral("2"));
}

void TestInterpreter::openBracesWantMore()
{
    QVERIFY(TclInterpreter::isComplete(QStringLiteral("puts {a}")));
    QVERIFY(!TclInterpreter::isComplete(QStringLiteral("foreach x {a b} {")));
    TclInterpreter tcl;
    tcl.addCommand(QStringLiteral("zel_view"), [](const QStringList&) { return TclResult::value(); });
    QVERIFY(tcl.commandNames().contains(QStringLiteral("zel_view")));
    QVERIFY(tcl.commandNames().contains(QStringLiteral("foreach")));
}

void TestInterpreter::argumentsComplainInTclsWords_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("error");
    const QString usage = QStringLiteral("wrong # args: should be \"u\"");
    QTest::newRow("all there") << QStringList{"-id", "5", "-rsc", "-id"} << QString();
    QTest::newRow("nothing") << QStringList() << usage;
    QTest::newRow("no value") << QStringList{"-rsc", "a", "-id"} << usage;
    QTest::newRow("twice") << QStringList{"-rsc", "a", "-rsc", "b", "-id", "5"} << usage;
    QTest::newRow("something else") << QStringList{"-rsc", "a", "-id", "5", "x"} << usage;
    QTest::newRow("no number") << QStringList{"-rsc", "a", "-id", "5x"} << "expected integer but got \"5x\"";
}

void TestInterpreter::argumentsComplainInTclsWords()
{
    QFETCH(QStringList, words);
    QFETCH(QString, error);
    Arguments arguments(words, QStringLiteral("u"), {QStringLiteral("-rsc"), QStringLiteral("-id")});
    const QString resource = arguments.text(QStringLiteral("-rsc"));
    const int id = arguments.number(QStringLiteral("-id"));
    arguments.positional(0, 0);
    QCOMPARE(arguments.isOk() ? QString() : arguments.error().text, error);
    if (error.isEmpty())
        QCOMPARE(resource + QString::number(id), QStringLiteral("-id5"));
}

ZEL_TEST_MAIN(TestInterpreter)
#include "tst_interpreter.moc"
