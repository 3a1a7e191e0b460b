// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QMap>

class QAction;
class QMainWindow;
class QMenu;
class QToolBar;

namespace mirn::zelchip {

// The main window's own actions, its menus and its tool bar. The chip view's actions, which come and go with each
// project, are inserted into them. All are children of the window. This class connects no signals.
class HostActions final
{
public:
    // Fills the window's menu bar and adds the tool bar.
    explicit HostActions(QMainWindow* window);

    // Inserts the chip view's actions, by ZelChipViewActionId, into tool bar and menu, with icons, tool tips and
    // shortcuts. They disappear by themselves when their controller is deleted. Without a filter the filter action is
    // disabled.
    void addChipActions(const QMap<int, QAction*>& actions, bool hasFilter);

    // Adds actions that show or hide parts of the window to the View menu.
    void addToggles(const QList<QAction*>& toggles);

    // Sets the texts of the changes that undo and redo would make; an empty text disables the action.
    void showHistory(const QString& undoText, const QString& redoText);

    QAction* openProject;
    QAction* openDrawing;
    QAction* importTables;
    QMenu* openRecent; // filled by the window
    QAction* save;
    QMenu* comparePlacement; // filled by the window
    QAction* exportConstraints;
    QAction* importConstraints;
    QAction* saveSnapshot;
    QAction* exportPicture;
    QAction* quit;
    QAction* undo;
    QAction* find;
    QAction* placeOn;
    QAction* placeRest;
    QAction* lock;
    QAction* unlock;
    QAction* redo;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* fit;
    QAction* zoomToSelection;
    QAction* viewBack;
    QAction* viewForward;
    QAction* overview; // can be checked
    QAction* names; // can be checked
    QAction* keys;
    QAction* commands;
    QAction* about;

private:
    void createActions(QMainWindow* window);
    void fillMenus(QMainWindow* window);
    void fillToolBar(QMainWindow* window);

    QMenu* m_viewMenu;
    QToolBar* m_toolBar;
    QAction* m_endOfModesInMenu; // the chip view's actions are inserted before these separators
    QAction* m_endOfModesInToolBar;
};

} // namespace mirn::zelchip
