// SPDX-License-Identifier: MIT
#include "host/tcl/arguments.h"
#include "host/tcl/commandhelp.h"
#include "host/tcl/commandtable.h"
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

    void argumentsComplainInTclsWords_data()
    {
        const Rows<QString, QString, bool> row; // the syntax, the words, whether they fit
        const auto place = [&row](const char* name, const QString& words, bool fits) {
            row(name, "-rsc NAME -id SITE ?-value V?", words, fits);
        };
        place("all that must be there", "-id 5 -rsc -id", true);
        place("all that may be there", "-value x -id 5 -rsc a", true);
        place("nothing", "", false);
        place("no value", "-rsc a -id", false);
        place("twice", "-rsc a -rsc b -id 5", false);
        place("something else", "-rsc a -id 5 x", false);
        row("neither a flag nor a word", "?-unplaced? ?PATTERN?", "", true);
        row("a flag and a word", "?-unplaced? ?PATTERN?", "a* -unplaced", true);
        row("a word too many", "?-unplaced? ?PATTERN?", "a b", false);
        row("at least one word", "SITE ?SITE ...?", "", false);
        row("any number of words", "SITE ?SITE ...?", "a b c", true);
        row("no arguments", "", "a", false);
    }

    void argumentsComplainInTclsWords()
    {
        const auto [syntax, words, fits] = row<QString, QString, bool>();
        const Arguments arguments(words.split(' ', Qt::SkipEmptyParts), "u", CommandSyntax(syntax));
        QCOMPARE(arguments.isOk(), fits);
        QCOMPARE(arguments.error().text, "wrong # args: should be \"u\"");
        if (fits && words.contains("-rsc"))
            QCOMPARE(arguments.text("-rsc") + arguments.text("-id"), words.startsWith("-id") ? "-id5" : "a5");
    }

    // On the commands and on their subcommands.
    void helpIsWritten()
    {
        TclInterpreter tcl;
        QString text;
        tcl.setOutput([&](const QString& written, TclInterpreter::Channel) { text = written; });
        addHelpCommand(tcl);
        QVERIFY(tcl.evaluate("help").isOk);
        for (const CommandEntry& entry : commandTable())
            QVERIFY(text.contains(entry.name()) && text.contains(entry.summary));
        QCOMPARE(text.count("zel_resource place "), 1); // with both forms
        QVERIFY(tcl.evaluate("help zel_resource").isOk);
        QVERIFY(text.startsWith("zel_resource place -rsc NAME -id SITE\nzel_resource place -auto ?-rsc NAME"));
        QVERIFY(tcl.evaluate("help zel_tree").isOk);
        QVERIFY(text.contains("zel_tree where -rsc NAME") && text.contains("zel_tree expand"));
        QVERIFY(tcl.evaluate("help zel_view where").isOk);
        QVERIFY(text.startsWith("zel_view where -id SITE\n") && !text.contains("zel_view fit"));
        QVERIFY(text.contains("Example: zel_view where -id DCU0"));
        QVERIFY(tcl.evaluate("help nothing").text.startsWith("unknown command \"nothing\": must be zel_resource, "));
        QCOMPARE(tcl.evaluate("help zel_tree fit").text,
            "unknown subcommand \"fit\" of zel_tree: must be where, expand, collapse, select");
        QCOMPARE(tcl.evaluate("help undo it").text, "undo has no subcommands");
    }
};

ZEL_TEST_MAIN(TestInterpreter)
#include "tst_interpreter.moc"
