// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"
#include "host/project/commandshell.h"
#include "host/project/projectsession.h"
#include "host/window/hostactions.h"
#include "host/window/openproject.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace mirn::zelchipview {
class PointerNote;
}

namespace mirn::zelchip {

class ChipStatusBar;
class CompareDock;
class DesignAids;
class ConsoleDock;
class PictureActions;
struct PictureRequest;
class PlanningMenu;
class ProblemsDock;
class ScriptAccess;
class ShellConsole;
class WindowMemory;
class ViewProbe;

// The program's window: menus, tool bar, console and status bar around the chip view of the open project. It
// owns the open project, answers the commands that the view sends, and keeps the view up to date with the design. The
// rules of the design are not its concern.
class MainWindow final : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(std::unique_ptr<ProjectSession> session);
    ~MainWindow() override;

    // Replaces the open project by a project folder or a drawing. If that fails, a message box says why; then, and if
    // the user cancels a long load, the present project stays open.
    void open(const QString& path);

    // Runs a script file. Returns false, with a message in *error, on failure.
    bool runScript(const QString& file, QString* error);

    // Writes a picture of the window as it is now, including the console. Returns an empty text for success, else an
    // error.
    QString saveSnapshot(const QString& file);

    void showSession(std::unique_ptr<ProjectSession> session);

    // How the window is brought back as it was left; call its begin() before the window is shown.
    [[nodiscard]] WindowMemory& memory() { return *m_memory; }

    // Shows the whole drawing.
    void fit();

    // Tells that the program ends with this window, so that deleting it need not free a large drawing piece by piece.
    static void endsProgram();

Q_SIGNALS:
    // Emitted while runScript() runs; the console shows the same output.
    void scriptWrote(const QString& text, mirn::zelchip::TclInterpreter::Channel channel);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void connectActions();
    void connectChipView();
    void connectShell();
    void connectDocks();
    void beginProject();
    void connectDesign();
    void showSummary();
    void answerView(const QString& command, int& ret, QString& result);
    void refreshView();
    void showDesignState();
    void save();
    void stepDesign(zelengine::Refusal (DesignEditor::*step)(), const QString& done);
    void settle();
    void chooseSnapshot();
    void choosePicture();
    QString exportPicture(const PictureRequest& request);
    void zoomToSelection();
    void reportSaved(const QString& file, const QString& error);

    std::unique_ptr<ScriptAccess> m_access; // the shell uses it
    CommandShell m_shell;
    HostActions m_actions;
    ConsoleDock* const m_console; // child of the window
    QTimer m_refresh; // updates the view once after a series of changes
    ProblemsDock* const m_problems; // child of the window
    CompareDock* const m_compare; // child of the window
    ChipStatusBar* const m_statusBar; // child of the window
    zelchipview::PointerNote* const m_dragNote; // child of the window
    PlanningMenu* const m_planning; // child of the window
    PictureActions* const m_pictures; // child of the window
    WindowMemory* const m_memory; // child of the window
    OpenProject m_project;
    ShellConsole* const m_shellConsole; // child of the window
    ViewProbe* m_probe = nullptr; // child of the graphics view, like the aids
    DesignAids* m_designAids = nullptr;
    bool m_isArranged = false; // whether the docks have had their initial sizes
};

} // namespace mirn::zelchip
