// SPDX-License-Identifier: MIT
#include "host/console/tclcompletion.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

using namespace mirn::zelchip;

class TclCompletionTest final : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void completes_data();
    void completes();
    void namesAreOneWordForTcl();
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
    zeltest::addRows({
        {"a command", "pu", "puts ", "puts"},
        {"what several commands have in common", "zel", "zel_", "zel_project|zel_resource|zel_setting"},
        {"nothing more in common", "for", "for", "foreach|format"},
        {"nothing that fits", "xyz", "xyz", ""},
        {"a command behind a semicolon", "puts a; pu", "puts a; puts ", "puts"},
        {"a command on the next line", "puts a\npu", "puts a\nputs ", "puts"},
        {"a command in brackets", "puts [fore", "puts [foreach ", "foreach"},
        {"a command in quoted brackets", "puts \"a [fore", "puts \"a [foreach ", "foreach"},
        {"a command in a body", "foreach a {b c} {\n pu", "foreach a {b c} {\n puts ", "puts"},
        {"behind brackets that are closed", "zel_resource get [format a] -i", "zel_resource get [format a] -ip ",
            "-ip"},
        {"behind an escaped line's end", "zel_resource \\\n pl", "zel_resource \\\n place ", "place"},
        {"no command among arguments", "puts pu", "puts pu", ""},
        {"a subcommand", "zel_resource pl", "zel_resource place ", "place"},
        {"subcommands", "zel_resource re", "zel_resource re", "reset|remove|restore"},
        {"all subcommands", "zel_tree ", "zel_tree ", "where|expand|collapse|select"},
        {"options", "zel_resource place ", "zel_resource place -", "-rsc|-id"},
        {"options of a command without subcommands", "zel_setting -", "zel_setting -", "-id|-key|-value"},
        {"options that are left", "zel_resource place -id 3 ", "zel_resource place -id 3 -rsc ", "-rsc"},
        {"no option where its value is due", "zel_setting -key ", "zel_setting -key ", ""},
        {"a mode", "zel_view mode z", "zel_view mode zoom ", "zoom"},
        {"one mode only", "zel_view mode zoom ", "zel_view mode zoom ", ""},
        {"a resource", "zel_resource place -rsc to", "zel_resource place -rsc top/", "top/a|top/b 1|top/b 2"},
        {"a resource to its end", "zel_resource get -ip top/a", "zel_resource get -ip top/a ", "top/a"},
        {"a resource with a blank", "zel_resource get -ip {top/b 1", "zel_resource get -ip {top/b 1} ", "top/b 1"},
        {"resources with a blank", "zel_tree where -rsc top/b", "zel_tree where -rsc {top/b ", "top/b 1|top/b 2"},
        {"a resource in quotes", "zel_tree where -rsc \"top/b 2", "zel_tree where -rsc {top/b 2} ", "top/b 2"},
        {"a resource in a body", "foreach a b {zel_resource get -ip {top/b 1",
            "foreach a b {zel_resource get -ip {top/b 1} ", "top/b 1"},
        {"resources that cannot stand in braces", "zel_resource get -ip o", "zel_resource get -ip odd\\{\\ ",
            "odd{ 1|odd{ 2"},
        {"resources behind a backslash", "zel_resource get -ip odd\\{", "zel_resource get -ip odd\\{\\ ",
            "odd{ 1|odd{ 2"},
        {"a resource outside the basic characters", "zel_resource get -ip \xc3\xa4",
            "zel_resource get -ip \xc3\xa4/\xf0\x9f\x94\xa7 ", "\xc3\xa4/\xf0\x9f\x94\xa7"},
        {"no half characters", "zel_resource get -ip p", "zel_resource get -ip p/",
            "p/\xf0\x9f\x94\xa7|p/\xf0\x9f\x94\xa8"},
        {"resources of other commands are unknown", "puts -rsc to", "puts -rsc to", ""},
    });
}

void TclCompletionTest::completes()
{
    const auto [before, after, candidates] = zeltest::currentRow<3>();
    const QStringList resources{"top/a", "top/b 1", "top/b 2", "odd{ 1", "odd{ 2",
        QString::fromUtf8("\xc3\xa4/\xf0\x9f\x94\xa7"), QString::fromUtf8("p/\xf0\x9f\x94\xa7"),
        QString::fromUtf8("p/\xf0\x9f\x94\xa8")};
    const Completion completion = completionWith(resources)(before);
    QCOMPARE(completion.candidates.join('|'), candidates);
    QCOMPARE(before.left(completion.start) + completion.text, after);
}

void TclCompletionTest::namesAreOneWordForTcl()
{
    TclInterpreter interpreter; // Tcl makes lists only once it runs
    for (const QString resource :
        {"u 0", "lane[0]", "$cost", "50%2", "say \"hi\"", "open{", "close}", "back\\", "#1", "a;b"}) {
        const Completion completion = completionWith({resource})("zel_resource get -ip ");
        QCOMPARE(interpreter.evaluate("set name " + completion.text).text, resource);
    }
}

ZEL_TEST_MAIN(TclCompletionTest)
#include "tst_tclcompletion.moc"
