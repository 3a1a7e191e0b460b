// SPDX-License-Identifier: MIT
#include "host/commandshell.h"
#include "host/console/tclcompletion.h"
#include "host/design/designeditor.h"
#include "host/tcl/projecttcl.h"
#include "host/tcl/windowtcl.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/testmain.h"

#include <QRegularExpression>
#include <QTest>

using namespace mirn::zelchip;

namespace {

// Commands that are called with wrong arguments only never ask for it.
class NoWindow final : public WindowAccess
{
public:
    mirn::zelchipview::ZelChipGUI* chipView() override { return nullptr; }
    mirn::zelchipview::ZelGraphicsView* graphicsView() override { return nullptr; }
    QTreeWidget* tree() override { return nullptr; }
    void fit() override { }
    QString saveSnapshot(const QString&) override { return {}; }
};

QStringList sorted(QStringList texts)
{
    texts.sort();
    return texts;
}

// As the command itself lists them; none where it has none.
QStringList subcommandsOf(TclInterpreter& tcl, const QString& command)
{
    const QString answer = tcl.evaluate(command + " no-such-subcommand").text;
    const QString list = answer.section("must be ", 1);
    return list.isEmpty() ? QStringList() : list.split(", ");
}

// Those in the usage that it gives when it is called with too much.
QStringList optionsOf(TclInterpreter& tcl, const QString& command)
{
    static const QRegularExpression usage("wrong # args: should be \"(.*)\"");
    static const QRegularExpression option("(?<=[ ?])-[a-z]+");
    const QString answer = tcl.evaluate(command + " a b c d e f g h i").text;
    QStringList options;
    for (auto found = option.globalMatch(usage.match(answer).captured(1)); found.hasNext();)
        options.append(found.next().captured());
    return options;
}

} // namespace

// Every command of the program, whoever defines it.
class TestCommands : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void completionKnowsThemAll();
};

void TestCommands::completionKnowsThemAll()
{
    HostFiles files;
    const auto session = openSession(files.project.path());
    CommandShell shell;
    NoWindow window;
    TclInterpreter& tcl = shell.interpreter();
    const QStringList ofTcl = tcl.commandNames();
    shell.setEditor(session->editor());
    addProjectCommands(tcl, {});
    addWindowCommands(tcl, window);

    const TclCompletion complete([] { return QStringList(); }, [] { return QStringList(); });
    const auto candidates = [&](const QString& before) { return sorted(complete(before).candidates); };
    int commands = 0;
    const QStringList all = tcl.commandNames();
    for (const QString& command : all) {
        if (ofTcl.contains(command))
            continue;
        const QStringList subcommands = subcommandsOf(tcl, command);
        if (subcommands.isEmpty() && optionsOf(tcl, command).isEmpty())
            continue; // there is nothing to complete
        ++commands;
        QCOMPARE(candidates(command + QLatin1Char(' ')),
            subcommands.isEmpty() ? sorted(optionsOf(tcl, command)) : sorted(subcommands));
        for (const QString& subcommand : subcommands) {
            const QString whole = command + QLatin1Char(' ') + subcommand;
            QStringList offered = candidates(whole + QLatin1Char(' '));
            offered.erase(std::remove_if(offered.begin(), offered.end(),
                              [](const QString& word) { return !word.startsWith(QLatin1Char('-')); }),
                offered.end());
            QVERIFY2(offered == sorted(optionsOf(tcl, whole)), qPrintable(whole));
        }
    }
    QCOMPARE(commands, 5);
}

ZEL_TEST_MAIN(TestCommands)
#include "tst_commands.moc"
