// SPDX-License-Identifier: MIT
#include "host/window/busyscript.h"

#include "host/project/commandshell.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

namespace mirn::zelchip {

BusyScript::BusyScript(CommandShell& shell, QObject* parent)
    : QObject(parent)
    , m_shell(shell)
{
    connect(&shell, &CommandShell::busy, this, &BusyScript::processEvents);
    connect(&shell, &CommandShell::idle, this, &BusyScript::end);
}

void BusyScript::setConsole(QWidget* console, QWidget* stopWidget)
{
    m_console = console;
    m_stopWidget = stopWidget;
}

void BusyScript::processEvents()
{
    // A dialog that the script opened runs its own event loop and receives its own input.
    if (QApplication::activeModalWidget())
        return;
    if (!m_isBusy) {
        m_isBusy = true;
        qApp->installEventFilter(this);
        Q_EMIT changed(true);
    }
    QCoreApplication::processEvents();
}

void BusyScript::end()
{
    if (!m_isBusy)
        return;
    m_isBusy = false;
    qApp->removeEventFilter(this);
    Q_EMIT changed(false);
}

// A window passes its keys on to the widget that has the focus.
bool BusyScript::isInConsole(const QObject* watched) const
{
    const auto* widget = watched->isWindowType() ? QApplication::focusWidget() : qobject_cast<const QWidget*>(watched);
    return m_console && widget && m_console->isAncestorOf(widget);
}

bool BusyScript::eventFilter(QObject* watched, QEvent* event)
{
    if (QApplication::activeModalWidget())
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::KeyPress: {
        const auto* keyEvent = static_cast<QKeyEvent*>(event);
        if (keyEvent->key() == Qt::Key_Escape)
            m_shell.cancel();
        return !keyEvent->matches(QKeySequence::Copy) || !isInConsole(watched);
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick: {
        const auto* widget = qobject_cast<QWidget*>(watched);
        return widget && widget != m_stopWidget;
    }
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::Wheel:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
        return true;
    case QEvent::Close:
        event->ignore();
        return true;
    default:
        return QObject::eventFilter(watched, event);
    }
}

} // namespace mirn::zelchip
