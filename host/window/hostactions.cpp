// SPDX-License-Identifier: MIT
#include "host/window/hostactions.h"

#include "graphics/zelconstants.h"
#include "host/look/icons.h"
#include "host/tcl/translation.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>

namespace mirn::zelchip {

namespace {

const char ToolBarStyle[] = R"(
QToolBar { border: none; border-bottom: 1px solid palette(mid); spacing: 2px; padding: 3px 6px; }
)";

constexpr int IconSize = 24; // device-independent pixels

QIcon icon(const char* name)
{
    const QIcon drawn(QStringLiteral(":/zelchip/%1.png").arg(QLatin1String(name)));
    return fittingIcon(drawn, QApplication::palette());
}

QAction* newAction(QMainWindow* window, const QString& text, const QKeySequence& shortcut = {})
{
    auto* action = new QAction(text, window);
    action->setShortcut(shortcut);
    return action;
}

// It can be checked and is; the object name is that under which it is remembered.
QAction* newToggle(QMainWindow* window, const QString& text, const QString& name)
{
    QAction* action = newAction(window, text);
    action->setObjectName(name);
    action->setCheckable(true);
    action->setChecked(true);
    return action;
}

// The tip includes the shortcut, because a tool bar shows neither text nor keys.
void decorate(QAction* action, const QString& text, const char* iconName, const QString& tip)
{
    action->setText(text);
    action->setIcon(icon(iconName));
    const QString keys = action->shortcut().toString(QKeySequence::NativeText);
    action->setToolTip(keys.isEmpty() ? tip : QStringLiteral("%1 (%2)").arg(tip, keys));
}

void dressMode(QAction* action, Qt::Key key, const QString& text, const char* iconName, const QString& tip)
{
    action->setShortcut(key);
    decorate(action, text, iconName, tip);
}

} // namespace

HostActions::HostActions(QMainWindow* window)
{
    createActions(window);
    fillMenus(window);
    fillToolBar(window);
}

void HostActions::createActions(QMainWindow* window)
{
    openProject = newAction(window, QString(), QKeySequence::Open);
    decorate(openProject, tr("&Open Project..."), "open", tr("Open a project folder"));
    openDrawing = newAction(window, tr("Open &Drawing..."), Qt::CTRL | Qt::SHIFT | Qt::Key_O);
    importTables = newAction(window, tr("&Import Tables..."));
    save = newAction(window, QString(), QKeySequence::Save);
    decorate(save, tr("&Save"), "save", tr("Save the placement"));
    undo = newAction(window, QString(), QKeySequence::Undo);
    redo = newAction(window, QString(), QKeySequence::Redo);
    showHistory({}, {});
    find = newAction(window, tr("&Find Resource"), QKeySequence::Find);
    placeOn = newAction(window, tr("&Place on..."), Qt::CTRL | Qt::Key_P);
    placeRest = newAction(window, tr("Place the &Rest"), Qt::CTRL | Qt::SHIFT | Qt::Key_P);
    lock = newAction(window, tr("&Lock"), Qt::CTRL | Qt::Key_L);
    unlock = newAction(window, tr("Unl&ock"), Qt::CTRL | Qt::SHIFT | Qt::Key_L);
    saveSnapshot = newAction(window, tr("Save S&napshot..."), Qt::CTRL | Qt::SHIFT | Qt::Key_S);
    exportPicture = newAction(window, tr("&Export Picture..."), Qt::CTRL | Qt::SHIFT | Qt::Key_E);
    exportConstraints = newAction(window, tr("E&xport Constraints..."));
    importConstraints = newAction(window, tr("Import Cons&traints..."));
    quit = newAction(window, tr("&Quit"), QKeySequence::Quit);
    quit->setMenuRole(QAction::QuitRole);

    zoomIn = newAction(window, QString());
    zoomIn->setShortcuts({Qt::CTRL | Qt::Key_Plus, Qt::CTRL | Qt::Key_Equal});
    decorate(zoomIn, tr("Zoom &In"), "zoom-in", tr("Zoom in"));
    zoomOut = newAction(window, QString(), Qt::CTRL | Qt::Key_Minus);
    decorate(zoomOut, tr("Zoom &Out"), "zoom-out", tr("Zoom out"));
    fit = newAction(window, QString());
    fit->setShortcuts({Qt::Key_F, Qt::CTRL | Qt::Key_0});
    decorate(fit, tr("&Fit Drawing"), "zoom-fit", tr("Show the whole drawing"));
    zoomToSelection = newAction(window, tr("Zoom to S&election"), Qt::SHIFT | Qt::Key_F);

    viewBack = newAction(window, tr("Pre&vious View"));
    viewBack->setShortcuts({Qt::ALT | Qt::Key_Left, Qt::Key_Backspace});
    viewForward = newAction(window, tr("Ne&xt View"), Qt::ALT | Qt::Key_Right);

    overview = newToggle(window, tr("&Overview"), QStringLiteral("overview"));
    names = newToggle(window, tr("&Names on Sites"), QStringLiteral("names"));

    keys = newAction(window, tr("&Keys and Gestures"), QKeySequence::HelpContents);
    commands = newAction(window, tr("&Commands"));
    about = newAction(window, tr("&About zelchip"));
    about->setMenuRole(QAction::AboutRole);
}

void HostActions::fillMenus(QMainWindow* window)
{
    QMenu* file = window->menuBar()->addMenu(tr("&File"));
    file->addActions({openProject, openDrawing});
    openRecent = file->addMenu(tr("Open &Recent"));
    file->addAction(importTables);
    file->addSeparator();
    file->addActions({save, exportPicture, saveSnapshot});
    comparePlacement = file->addMenu(tr("&Compare Placement With"));
    file->addSeparator();
    file->addActions({exportConstraints, importConstraints});
    file->addSeparator();
    file->addAction(quit);

    QMenu* edit = window->menuBar()->addMenu(tr("&Edit"));
    edit->addActions({undo, redo});
    edit->addSeparator();
    edit->addActions({find, placeOn, placeRest, lock, unlock});

    m_viewMenu = window->menuBar()->addMenu(tr("&View"));
    m_endOfModesInMenu = m_viewMenu->addSeparator();
    m_viewMenu->addActions({zoomIn, zoomOut, fit, zoomToSelection});
    m_viewMenu->addSeparator();
    m_viewMenu->addActions({viewBack, viewForward});

    QMenu* help = window->menuBar()->addMenu(tr("&Help"));
    help->addActions({keys, commands, about});
}

void HostActions::fillToolBar(QMainWindow* window)
{
    m_toolBar = window->addToolBar(tr("Tools"));
    m_toolBar->setObjectName(QStringLiteral("tools"));
    m_toolBar->setMovable(false);
    m_toolBar->setContextMenuPolicy(Qt::PreventContextMenu);
    m_toolBar->setIconSize(QSize(IconSize, IconSize));
    m_toolBar->setStyleSheet(QString::fromLatin1(ToolBarStyle));
    m_toolBar->addActions({openProject, save});
    m_toolBar->addSeparator();
    m_toolBar->addActions({undo, redo});
    m_toolBar->addSeparator();
    m_endOfModesInToolBar = m_toolBar->addSeparator();
    m_toolBar->addActions({zoomIn, zoomOut, fit});
}

void HostActions::addToggles(const QList<QAction*>& toggles)
{
    m_viewMenu->addSeparator();
    m_viewMenu->addActions(toggles);
}

void HostActions::showHistory(const QString& undoText, const QString& redoText)
{
    decorate(undo, undoText.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(undoText), "undo",
        undoText.isEmpty() ? tr("Undo") : tr("Undo: %1").arg(undoText));
    undo->setEnabled(!undoText.isEmpty());
    decorate(redo, redoText.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(redoText), "redo",
        redoText.isEmpty() ? tr("Redo") : tr("Redo: %1").arg(redoText));
    redo->setEnabled(!redoText.isEmpty());
}

void HostActions::addChipActions(const QMap<int, QAction*>& actions, bool hasFilter)
{
    QAction* select = actions.value(zelchipview::ACTION_SELECT);
    QAction* pan = actions.value(zelchipview::ACTION_PAN);
    QAction* zoom = actions.value(zelchipview::ACTION_ZOOM);
    QAction* filter = actions.value(zelchipview::ACTION_FILTER);
    dressMode(select, Qt::Key_S, tr("&Select"), "select", tr("Select elements by click or rectangle"));
    dressMode(pan, Qt::Key_H, tr("&Pan"), "pan", tr("Drag the drawing"));
    dressMode(zoom, Qt::Key_Z, tr("&Zoom Area"), "zoom-area", tr("Zoom to a rectangle"));
    decorate(filter, tr("&Filter"), "filter", tr("Mark kinds of elements"));
    filter->setEnabled(hasFilter);

    m_viewMenu->insertActions(m_endOfModesInMenu, {select, pan, zoom, filter});
    m_toolBar->insertActions(m_endOfModesInToolBar, {select, pan, zoom, filter});
    if (auto* button = qobject_cast<QToolButton*>(m_toolBar->widgetForAction(filter)))
        button->setPopupMode(QToolButton::InstantPopup);
}

} // namespace mirn::zelchip
