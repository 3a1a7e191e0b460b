// SPDX-License-Identifier: MIT
#include "host/console/tclcompletion.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/support/testmain.h"

#include <QTest>

using namespace mirn::zelchip;

class TclCompletionTest final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void completes_data();
    void completes();
    void namesAreOneWordForTcl_data();
    void namesAreOneWordForTcl();

private:
    TclInterpreter m_interpreter; // Tcl makes lists only once it runs
};

namespace {

TclCompletion completionWith(const QStringList& resources)
{
    const QStringList commands{"foreach", "format", "puts", "zel_project", "zel_resource", "zel_setting"};
    return TclCompletion([commands] { return commands; }, [resources] { return resources; });
}

} // namespace

void TclCompletionTest::completes_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QStringList>("candidates");
    const auto row = [](const char* name, const char* before, const char* after, const char* candidates) {
        const QString words = QString::fromUtf8(candidates);
        QTest::newRow(name) << QString::fromUtf8(before) << QString::fromUtf8(after)
                            << (words.isEmpty() ? QStringList() : words.split(QLatin1Char('|')));
    };
    row("a command", "pu", "puts ", "puts");
    row("what several commands have in common", "zel", "zel_", "zel_project|zel_resource|zel_setting");
    row("nothing more in common", "for", "for", "foreach|format");
    row("nothing that fits", "xyz", "xyz", "");
    row("a command behind a semicolon", "puts a; pu", "puts a; puts ", "puts");
    row("a command on the next line", "puts a\npu", "puts a\nputs ", "puts");
    row("a command in brackets", "puts [fore", "puts [foreach ", "foreach");
    row("a command in quoted brackets", "puts \"a [fore", "puts \"a [foreach ", "foreach");
    row("a command in a body", "foreach a {b c} {\n pu", "foreach a {b c} {\n puts ", "puts");
    row("behind brackets that are closed", "zel_resource get [format a] -i", "zel_resource get [format a] -ip ", "-ip");
    row("behind an escaped line's end", "zel_resource \\\n pl", "zel_resource \\\n place ", "place");
    row("no command among arguments", "puts pu", "puts pu", "");
    row("a subcommand", "zel_resource pl", "zel_resource place ", "place");
    row("subcommands", "zel_resource re", "zel_resource re", "reset|remove|restore");
    row("all subcommands", "zel_tree ", "zel_tree ", "where|expand|collapse|select");
    row("options", "zel_resource place ", "zel_resource place -", "-rsc|-id");
    row("options of a command without subcommands", "zel_setting -", "zel_setting -", "-id|-key|-value");
    row("options that are left", "zel_resource place -id 3 ", "zel_resource place -id 3 -rsc ", "-rsc");
    row("no option where its value is due", "zel_setting -key ", "zel_setting -key ", "");
    row("a mode", "zel_view mode z", "zel_view mode zoom ", "zoom");
    row("one mode only", "zel_view mode zoom ", "zel_view mode zoom ", "");
    row("a resource", "zel_resource place -rsc to", "zel_resource place -rsc top/", "top/a|top/b 1|top/b 2");
    row("a resource to its end", "zel_resource get -ip top/a", "zel_resource get -ip top/a ", "top/a");
    row("a resource with a blank", "zel_resource get -ip {top/b 1", "zel_resource get -ip {top/b 1} ", "top/b 1");
    row("resources with a blank", "zel_tree where -rsc top/b", "zel_tree where -rsc {top/b ", "top/b 1|top/b 2");
    row("a resource in quotes", "zel_tree where -rsc \"top/b 2", "zel_tree where -rsc {top/b 2} ", "top/b 2");
    row("a resource in a body", "foreach a b {zel_resource get -ip {top/b 1",
        "foreach a b {zel_resource get -ip {top/b 1} ", "top/b 1");
    row("resources that cannot stand in braces", "zel_resource get -ip o", "zel_resource get -ip odd\\{\\ ",
        "odd{ 1|odd{ 2");
    row("resources behind a backslash", "zel_resource get -ip odd\\{", "zel_resource get -ip odd\\{\\ ",
        "odd{ 1|odd{ 2");
    row("a resource outside the basic characters", "zel_resource get -ip \xc3\xa4",
        "zel_resource get -ip \xc3\xa4/\xf0\x9f\x94\xa7 ", "\xc3\xa4/\xf0\x9f\x94\xa7");
    row("no half characters", "zel_resource get -ip p", "zel_resource get -ip p/",
        "p/\xf0\x9f\x94\xa7|p/\xf0\x9f\x94\xa8");
    row("resources of other commands are unknown", "puts -rsc to", "puts -rsc to", "");
}

void TclCompletionTest::completes()
{
    QFETCH(const QString, before);
    const QStringList resources{"top/a", "top/b 1", "top/b 2", "odd{ 1", "odd{ 2",
        QString::fromUtf8("\xc3\xa4/\xf0\x9f\x94\xa7"), QString::fromUtf8("p/\xf0\x9f\x94\xa7"),
        QString::fromUtf8("p/\xf0\x9f\x94\xa8")};
    const Completion completion = completionWith(resources)(before);
    QTEST(completion.candidates, "candidates");
    QTEST(before.left(completion.start) + completion.text, "after");
}

void TclCompletionTest::namesAreOneWordForTcl_data()
{
    QTest::addColumn<QString>("resource");
    for (const char* name : {"u 0", "lane[0]", "$cost", "50%2", "say \"hi\"", "open{", "close}", "back\\", "#1", "a;b"})
        QTest::newRow(name) << QString::fromLatin1(name);
}

void TclCompletionTest::namesAreOneWordForTcl()
{
    QFETCH(const QString, resource);
    const Completion completion = completionWith({resource})(QStringLiteral("zel_resource get -ip "));
    QCOMPARE(m_interpreter.evaluate(QStringLiteral("set name ") + completion.text).text, resource);
}

ZEL_TEST_MAIN(TclCompletionTest)
#include "tst_tclcompletion.moc"
