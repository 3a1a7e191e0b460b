// SPDX-License-Identifier: MIT
#include "host/window/designaids.h"

#include "graphics/zelgraphicsview.h"
#include "host/project/commandshell.h"
#include "host/widgets/chipstatusbar.h"
#include "host/window/autoplace.h"
#include "host/window/drawingarea.h"
#include "host/window/hostactions.h"
#include "host/window/keyboardaccess.h"
#include "host/window/lockactions.h"
#include "host/window/moveaids.h"
#include "planning/pointernote.h"

#include <QAction>

namespace mirn::zelchip {

namespace {

constexpr int AidMessageMilliseconds = 8000;

} // namespace

DesignAids::DesignAids(DrawingArea& area, const Window& window)
    : QObject(area.graphicsView())
    , m_window(window)
{
    addMoving(area);
    addPlacingAndLocking(area);
}

void DesignAids::addMoving(DrawingArea& area)
{
    m_moveAids = new MoveAids(area, m_window.actions.names);
    connect(m_moveAids, &MoveAids::commandChanged, this, [this](const QString& command) {
        if (!command.isEmpty())
            m_window.statusBar->showMessage(command);
        else if (!m_window.note->isVisible()) // else there is a reason
            m_window.statusBar->clearMessage();
    });
    connect(m_moveAids, &MoveAids::changed, this, [this](const QString& text, QPoint position) {
        m_window.statusBar->showMessage(text);
        m_window.note->showAt(text, position);
    });
    connect(m_moveAids, &MoveAids::refused, this, [this](const QString& text, QPoint position) {
        tell(text);
        m_window.note->showForAWhile(text, position);
    });
}

// What is made here is owned by the view.
void DesignAids::addPlacingAndLocking(DrawingArea& area)
{
    const HostActions& actions = m_window.actions;
    auto* autoPlace = new AutoPlace(area);
    connect(actions.placeRest, &QAction::triggered, autoPlace, &AutoPlace::placeRest);
    connect(autoPlace, &AutoPlace::told, this, &DesignAids::tell);
    auto* keyboard = new KeyboardAccess(
        area, actions.placeOn, autoPlace, m_window.console, m_window.problems, m_window.comparison);
    connect(keyboard, &KeyboardAccess::pointed, m_window.statusBar,
        [bar = m_window.statusBar](const QPointF& middle, const QString& site) { bar->showPointer(middle, site, {}); });
    connect(keyboard, &KeyboardAccess::told, this, &DesignAids::tell);
    auto* locks = new LockActions(area, actions.lock, actions.unlock, keyboard->rowMenu());
    connect(locks, &LockActions::commandRequested, this,
        [this](const QString& command) { m_window.shell.run(command, CommandShell::Origin::View); });
    connect(locks, &LockActions::refused, this, &DesignAids::tell);
}

void DesignAids::refresh()
{
    m_moveAids->refresh();
}

void DesignAids::tell(const QString& text)
{
    m_window.statusBar->showMessage(text, AidMessageMilliseconds);
}

} // namespace mirn::zelchip
