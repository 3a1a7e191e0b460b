// SPDX-License-Identifier: MIT
#pragma once

#include "host/hostactions.h"

#include <QMainWindow>

#include <memory>

namespace mirn::zelchip {

class ChipStatusBar;
class ChipSurface;
class ProjectSession;
class ViewProbe;

// The program's window: menus, tool bar and status bar around the chip view of the open project.
class MainWindow final : public QMainWindow
{
    Q_OBJECT
public:
    explicit MainWindow(std::unique_ptr<ProjectSession> session);
    ~MainWindow() override;

    // Opens a project folder or a drawing in place of the present one. Where that fails, a message box says why, and
    // the present one stays.
    void open(const QString& path);

    void showSession(std::unique_ptr<ProjectSession> session);

    // Shows the whole drawing.
    void fit();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void connectActions();
    void connectChipView();
    void showSummary();
    void refuseCommand(const QString& command);
    void chooseProject();
    void chooseDrawing();
    void chooseSnapshot();
    void zoomToSelection();
    void showError(const QString& text);
    void showKeys();
    void showAbout();

    HostActions m_actions;
    ChipStatusBar* const m_statusBar; // child of the window
    std::unique_ptr<ChipSurface> m_surface;
    ViewProbe* m_probe = nullptr; // child of the graphics view
    bool m_isArranged = false; // the docks have had their first sizes
};

} // namespace mirn::zelchip
