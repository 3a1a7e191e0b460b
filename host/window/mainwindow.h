// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/refusal.h"
#include "host/project/commandshell.h"
#include "host/project/projectsession.h"
#include "host/window/hostactions.h"
#include "host/window/windowtcl.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace mirn::zelchipview {
class PointerNote;
}

namespace mirn::zelchip {

class BusyScript;
class ChipStatusBar;
class CompareDock;
class DesignAids;
class DrawingArea;
class ConsoleDock;
class PictureActions;
class PlanningMenu;
class ProblemsDock;
class ProjectNotice;
class WindowMemory;
class ViewProbe;

// The program's window: menus, tool bar, console and status bar around the chip view of the open project. It owns the
// open project, answers the commands that the view sends, and keeps the view up to date with the design. The rules of
// the design are not its concern.
class MainWindow final : public QMainWindow, private WindowAccess
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
    QString saveSnapshot(const QString& file) override;

    void showSession(std::unique_ptr<ProjectSession> session);

    // How the window is brought back as it was left; call its begin() before the window is shown.
    [[nodiscard]] WindowMemory& memory() { return *m_memory; }

    // Writes a picture of the drawing; returns the same.
    QString exportPicture(const PictureRequest& request) override;

    // Shows the whole drawing.
    void fit() override;

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
    void connectConsole();
    void connectDesign();
    void showSummary();
    void answerView(const QString& command, int& ret, QString& result);
    void reportResult(const TclResult& result);
    void refreshView();
    void showDesignState();
    void save();
    void stepDesign(zelengine::Refusal (DesignEditor::*step)(), const QString& done);
    [[nodiscard]] DesignEditor& editor() const;
    [[nodiscard]] QString replaceProject(
        const QString& path, ProjectSession::DoubtfulLock lock = ProjectSession::DoubtfulLock::Stays);
    void askAboutLock();
    void watchProject();
    [[nodiscard]] bool mayClose();
    void takeOver();
    void replaceDrawingArea(std::unique_ptr<ProjectSession> session);

    zelchipview::ZelChipGUI* chipView() override;
    zelchipview::ZelGraphicsScene* scene() override;
    zelchipview::ZelGraphicsView* graphicsView() override;
    QTreeWidget* tree() override;
    const zelengine::Device& device() const override;
    QAction* names() override { return m_actions.names; }
    QAction* overview() override { return m_actions.overview; }
    PlanningMenu& planning() override { return *m_planning; }
    void settle() override;

    void chooseProject();
    void chooseDrawing();
    void chooseSnapshot();
    void choosePicture();
    void zoomToSelection();
    void reportSaved(const QString& file, const QString& error);
    void showError(const QString& text);
    void showKeys();
    void showAbout();

    CommandShell m_shell;
    HostActions m_actions;
    BusyScript* const m_busyScript; // child of the window
    ConsoleDock* const m_console; // child of the window
    QTimer m_refresh; // updates the view once after a series of changes
    ProblemsDock* const m_problems; // child of the window
    CompareDock* const m_compare; // child of the window
    ChipStatusBar* const m_statusBar; // child of the window
    zelchipview::PointerNote* const m_dragNote; // child of the window
    PlanningMenu* const m_planning; // child of the window
    PictureActions* const m_pictures; // child of the window
    ProjectNotice* const m_notice; // child of the window
    WindowMemory* const m_memory; // child of the window
    std::unique_ptr<DrawingArea> m_drawingArea;
    ViewProbe* m_probe = nullptr; // child of the graphics view, like the aids
    DesignAids* m_designAids = nullptr;
    bool m_isArranged = false; // whether the docks have had their initial sizes
};

} // namespace mirn::zelchip
