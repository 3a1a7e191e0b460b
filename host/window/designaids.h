// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

namespace mirn::zelchipview {
class PointerNote;
}

namespace mirn::zelchip {

class ChipStatusBar;
class CommandShell;
class CompareDock;
class ConsoleDock;
class DrawingArea;
class HostActions;
class MoveAids;
class ProblemsDock;

// All with which people move, place and lock resources in one open project: by hand, by the keyboard and by the menus.
// It says in the status bar, and beside the pointer, what they do or why they do not. It is a child of the graphics
// view.
class DesignAids final : public QObject
{
    Q_OBJECT
public:
    // The parts of the window that the aids use; they outlive the project.
    struct Window
    {
        const HostActions& actions;
        CommandShell& shell;
        ChipStatusBar* statusBar;
        zelchipview::PointerNote* note;
        ConsoleDock* console;
        ProblemsDock* problems;
        CompareDock* comparison;
    };

    DesignAids(DrawingArea& area, const Window& window);

    // The design may have changed.
    void refresh();

private:
    void addMoving(DrawingArea& area);
    void addPlacingAndLocking(DrawingArea& area);
    void tell(const QString& text);

    const Window m_window;
    MoveAids* m_moveAids = nullptr; // child of the view
};

} // namespace mirn::zelchip
