// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace mirn::zelchip {

// The main window's own actions, its menus and its tool bar, and the places in them for the chip view's actions, which
// come and go with each project. All are children of the window; this connects nothing.
class HostActions final
{
public:
    // Fills the window's menu bar and adds the tool bar.
    explicit HostActions(QMainWindow* window);

    // Puts the chip view's actions, by ZelChipViewActionId, into tool bar and menu, with icons, tips and shortcuts.
    // When their controller goes, they disappear by themselves. The filter is greyed out where the device has none.
    void addChipActions(const QMap<int, QAction*>& actions, bool hasFilter);

    // Puts an action that shows or hides a part of the window into the menu.
    void addToggle(QAction* toggle);

    // What undo and redo would step over; an empty text greys the action out.
    void showHistory(const QString& undoText, const QString& redoText);

    QAction* openProject;
    QAction* openDrawing;
    QAction* save;
    QAction* saveSnapshot;
    QAction* quit;
    QAction* undo;
    QAction* find;
    QAction* redo;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* fit;
    QAction* zoomToSelection;
    QAction* keys;
    QAction* about;

private:
    void createActions(QMainWindow* window);
    void fillMenus(QMainWindow* window);
    void fillToolBar(QMainWindow* window);

    QMenu* m_viewMenu;
    QToolBar* m_toolBar;
    QAction* m_endOfModesInMenu; // separators before which the chip view's actions go
    QAction* m_endOfModesInToolBar;
};

} // namespace mirn::zelchip
