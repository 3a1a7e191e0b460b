// SPDX-License-Identifier: MIT
#include "host/window/shellconsole.h"

#include "engine/referenceengine.h"
#include "host/console/consoledock.h"
#include "host/console/tclcompletion.h"
#include "host/design/designeditor.h"
#include "host/design/elementname.h"
#include "host/dialogs/messagebox.h"
#include "host/widgets/chipstatusbar.h"
#include "host/window/busyscript.h"
#include "host/window/openproject.h"

#include <QMainWindow>
#include <QStringList>

namespace mirn::zelchip {

ShellConsole::ShellConsole(QMainWindow* window, CommandShell& shell, ConsoleDock* console, ChipStatusBar* statusBar,
    const OpenProject& project)
    : QObject(window)
    , m_shell(shell)
    , m_console(console)
    , m_statusBar(statusBar)
{
    connectCompletion(project);
    connectShell();
    auto* busy = new BusyScript(shell, window); // child of the window
    connect(busy, &BusyScript::changed, console, &ConsoleDock::setRunning);
    busy->setConsole(console, console->stopWidget());
}

void ShellConsole::connectCompletion(const OpenProject& project)
{
    const auto resources = [&project] {
        QStringList paths;
        const zelengine::Design& design = project.editor().engine().design();
        for (int index : design.all())
            paths.append(design.resource(index).path);
        return paths;
    };
    const auto sites = [&project] { return siteNames(project.editor().engine().device()); };
    m_console->setCompleter(TclCompletion([this] { return m_shell.interpreter().commandNames(); }, resources, sites));
}

void ShellConsole::connectShell()
{
    connect(m_console, &ConsoleDock::commandEntered, this,
        [this](const QString& script) { m_shell.run(script, CommandShell::Origin::User); });
    connect(m_console, &ConsoleDock::cancelRequested, &m_shell, &CommandShell::cancel);
    connect(&m_shell, &CommandShell::started, m_console, [this](const QString& script, CommandShell::Origin origin) {
        m_console->showCommand(
            script, origin == CommandShell::Origin::View ? ConsoleDock::Origin::View : ConsoleDock::Origin::User);
    });
    connect(&m_shell, &CommandShell::wrote, m_console, &ConsoleDock::showOutput);
    connect(&m_shell, &CommandShell::finished, this, &ShellConsole::report);
}

void ShellConsole::report(const TclResult& result)
{
    if (result.isOk) {
        m_console->showResult(result.text);
        m_statusBar->clearMessage(); // an earlier error
        return;
    }
    m_console->showError(result.text);
    m_statusBar->tell(asSentence(result.text));
}

} // namespace mirn::zelchip
