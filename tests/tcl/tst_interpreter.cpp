// SPDX-License-Identifier: MIT
#include "host/tcl/tclinterpreter.h"
#include "tests/support/testmain.h"

using namespace mirn::zelchip;

class TestInterpreter : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void namesComeThroughBraces_data()
    {
        const Rows<QString> row;
        row("blank", "my ip");
        row("brackets and dollar", "a[exit]$b");
        row("place holder and quotes", "\"%2\"");
        row("a backslash inside", "a\\nb");
        row("balanced braces", "a{b}c");
        row("beyond ASCII", "k\u00e4fer\u00b5");
        row("a line end among much else", "{a\n\\b} [c]\t$d\r\";");
        row("semicolon and hash", "# a;b");
    }

    void namesComeThroughBraces()
    {
        const auto [name] = row<QString>();
        TclInterpreter tcl;
        QStringList seen;
        tcl.addCommand("take", [&](const QStringList& words) {
            seen = words;
            return TclResult::value(words.last());
        });
        const QStringList expected{"take", "-rsc", name};
        if (!name.contains('\n')) {
            QCOMPARE(tcl.evaluate("take -rsc {" + name + '}').text, name);
            QCOMPARE(seen, expected);
            seen.clear();
        }
        QVERIFY(tcl.evaluate(TclInterpreter::list(expected)).isOk);
        QCOMPARE(seen, expected);
        QCOMPARE(TclInterpreter::words(TclInterpreter::list(expected)), expected);
        QVERIFY(!TclInterpreter::list(expected).contains('\n'));
    }

    // That holds inside another script as well.
    void errorsAreTheCommandsOwn()
    {
        TclInterpreter tcl;
        tcl.addCommand("fail", [](const QStringList&) { return TclResult::error("no"); });
        tcl.addCommand("inner", [&](const QStringList&) { return tcl.evaluate("error inside"); });
        QCOMPARE(tcl.evaluate("fail").text, "no");
        QVERIFY(!tcl.evaluate("fail").isOk);
        QVERIFY(tcl.errorTrace().contains("while executing"));
        QCOMPARE(tcl.evaluate("catch {fail} message; set message").text, "no");
        QVERIFY(!tcl.evaluate("nosuchcommand").isOk);
        QCOMPARE(tcl.evaluate("expr {6*7}").text, "42");
        QVERIFY(!TclInterpreter::words("{open"));
        QVERIFY(!tcl.evaluate("break").text.isEmpty());
        QCOMPARE(tcl.evaluate("catch inner; set x 5").text, "5");
        QVERIFY(!tcl.isRunning());
    }

    void putsGoesToTheHost()
    {
        TclInterpreter tcl;
        QStringList lines;
        tcl.setOutput([&](const QString& text, TclInterpreter::Channel channel) {
            lines.append((channel == TclInterpreter::Channel::Error ? "E:" : "") + text);
        });
        tcl.evaluate("puts {a b}; puts -nonewline stdout c; puts stderr d");
        QCOMPARE(lines, (QStringList{"a b\n", "c", "E:d\n"}));
        QVERIFY(!tcl.evaluate("puts nosuchchannel x").isOk);
        QVERIFY(!tcl.evaluate("puts").isOk);
        tcl.evaluate("rename puts say; say e");
        QCOMPARE(lines.last(), "e\n");
        const QString answer = tcl.evaluate("say nosuchchannel x").text;
        QVERIFY2(!answer.contains("command"), qPrintable(answer));
    }

    void endlessScriptsCanBeCancelled_data()
    {
        const Rows<QString> row;
        row("a loop without a body", "while 1 {}");
        row("a loop that catches everything", "while 1 {catch {while 1 {incr i}}}");
        row("a wait for what never comes", "vwait never");
        row("a long sleep", "after 100000000");
        row("an endless recursion of short calls", "proc p {} {after 1}; while 1 {p}");
    }

    void endlessScriptsCanBeCancelled()
    {
        TclInterpreter tcl;
        int calls = 0;
        tcl.setBusyHandler([&] {
            if (++calls == 3)
                tcl.cancel();
        });
        const auto [script] = row<QString>();
        const TclResult result = tcl.evaluate(script);
        QVERIFY(!result.isOk);
        QCOMPARE(result.text, "cancelled");
        QCOMPARE(tcl.evaluate("expr 1+1").text, "2");
    }
};

ZEL_TEST_MAIN(TestInterpreter)
#include "tst_interpreter.moc"
