// SPDX-License-Identifier: MIT
#include "host/console/tclcompletion.h"
#include "host/design/designeditor.h"
#include "host/project/commandshell.h"
#include "host/project/projecttcl.h"
#include "host/window/windowtcl.h"
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

// What stands in the answer of a command that is called wrongly, in order: the subcommands that it knows, or the
// options of its usage.
QStringList wordsIn(TclInterpreter& tcl, const QString& command, const char* list, const char* word)
{
    QStringList words;
    const QString answer = QRegularExpression(list).match(tcl.evaluate(command).text).captured(1);
    for (auto found = QRegularExpression(word).globalMatch(answer); found.hasNext();)
        words.append(found.next().captured());
    return sorted(words);
}

QStringList optionsOf(TclInterpreter& tcl, const QString& command)
{
    return wordsIn(tcl, command + " a b c d e f g h i", "wrong # args: should be \"(.*)\"", "(?<=[ ?])-[a-z]+");
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
        const QStringList subcommands = wordsIn(tcl, command + " no-such-subcommand", "must be (.*)", "\\w+");
        if (subcommands.isEmpty() && optionsOf(tcl, command).isEmpty())
            continue; // there is nothing to complete
        ++commands;
        QCOMPARE(candidates(command + ' '), subcommands.isEmpty() ? optionsOf(tcl, command) : subcommands);
        for (const QString& subcommand : subcommands) {
            const QString whole = command + ' ' + subcommand;
            const QStringList options = candidates(whole + ' ').filter(QRegularExpression("^-"));
            QVERIFY2(options == optionsOf(tcl, whole), qPrintable(whole));
        }
    }
    QCOMPARE(commands, 5);
}

ZEL_TEST_MAIN(TestCommands)
#include "tst_commands.moc"
