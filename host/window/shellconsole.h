// SPDX-License-Identifier: MIT
#pragma once

#include "host/project/commandshell.h"

#include <QObject>

class QMainWindow;

namespace mirn::zelchip {

class ChipStatusBar;
class ConsoleDock;
class OpenProject;

// Joins the console to the shell: what is typed runs, what runs is shown with its answer, and a long script can be
// stopped. Errors are said in the status bar as well. It is a child of the window.
class ShellConsole final : public QObject
{
    Q_OBJECT
public:
    // All outlive it.
    ShellConsole(QMainWindow* window, CommandShell& shell, ConsoleDock* console, ChipStatusBar* statusBar,
        const OpenProject& project);

    void report(const TclResult& result);

private:
    void connectCompletion(const OpenProject& project);
    void connectShell();

    CommandShell& m_shell;
    ConsoleDock* const m_console; // children of the window
    ChipStatusBar* const m_statusBar;
};

} // namespace mirn::zelchip
