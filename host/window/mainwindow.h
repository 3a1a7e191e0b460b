// SPDX-License-Identifier: MIT
#pragma once

#include "host/project/commandshell.h"
#include "host/project/projectsession.h"
#include "host/window/hostactions.h"
#include "host/window/windowtcl.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace mirn::zelchip {

class BusyScript;
class ChipStatusBar;
class ChipSurface;
class ConsoleDock;
class ViewProbe;

// The program's window: menus, tool bar, console and status bar around the chip view of the open project. Answers the
// commands that the view sends, and keeps the view up to date with the design.
class MainWindow final : public QMainWindow, private WindowAccess
{
    Q_OBJECT
public:
    explicit MainWindow(std::unique_ptr<ProjectSession> session);
    ~MainWindow() override;

    // Opens a project folder or a drawing in place of the present one. Where that fails, a message box says why, and
    // the present one stays; it stays as well when the user cancels a long load.
    void open(const QString& path);

    // Runs a script; false, with a message in *error, when it failed.
    bool runScript(const QString& file, QString* error);

    // Writes a picture of the window as it is now, console and all; a sentence when that could not be done.
    QString saveSnapshot(const QString& file) override;

    void showSession(std::unique_ptr<ProjectSession> session);

    // Shows the whole drawing.
    void fit() override;

Q_SIGNALS:
    // While runScript() runs; the console shows it as well.
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
    void stepDesign(QString (DesignEditor::*step)());
    [[nodiscard]] DesignEditor& editor() const;
    [[nodiscard]] QString replaceProject(
        const QString& path, ProjectSession::DoubtfulLock lock = ProjectSession::DoubtfulLock::Stays);
    void askAboutLock();
    void takeOver();
    void openSurface(std::unique_ptr<ProjectSession> session);

    zelchipview::ZelChipGUI* chipView() override;
    zelchipview::ZelGraphicsView* graphicsView() override;
    QTreeWidget* tree() override;

    void chooseProject();
    void chooseDrawing();
    void chooseSnapshot();
    void zoomToSelection();
    void showError(const QString& text);
    void showKeys();
    void showAbout();

    CommandShell m_shell;
    HostActions m_actions;
    BusyScript* const m_busyScript; // child of the window
    ConsoleDock* const m_console; // child of the window
    QTimer m_refresh; // brings the view up to date once after a series of changes
    ChipStatusBar* const m_statusBar; // child of the window
    std::unique_ptr<ChipSurface> m_surface;
    ViewProbe* m_probe = nullptr; // child of the graphics view
    bool m_isArranged = false; // the docks have had their first sizes
};

} // namespace mirn::zelchip
