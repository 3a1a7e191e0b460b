// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QDragMoveEvent>
#include <QMimeData>
#include <QWheelEvent>
#include <QWidget>

// Events as the window system sends them to a viewport when a person does something.
namespace zeltest {

inline void turnWheel(QWidget* viewport, QPoint position, QPoint angleDelta, Qt::KeyboardModifiers modifiers = {})
{
    QWheelEvent event(position, viewport->mapToGlobal(position), QPoint(), angleDelta, Qt::NoButton, modifiers,
        Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
}

inline void openMenu(QWidget* viewport, QPoint position)
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, viewport->mapToGlobal(position));
    QApplication::sendEvent(viewport, &event);
}

// A drag that enters, moves or is dropped. Returns whether the viewport accepts it.
template <typename Event> bool drag(QWidget* viewport, QPoint position)
{
    static const QMimeData Data;
    QCursor::setPos(viewport->mapToGlobal(position));
    Event event(position, Qt::CopyAction | Qt::MoveAction, &Data, Qt::LeftButton, Qt::NoModifier);
    event.setAccepted(false);
    QApplication::sendEvent(viewport, &event);
    return event.isAccepted();
}

// The drag leaves the viewport or is cancelled, of which the viewport hears in the same way.
inline void leaveDrag(QWidget* viewport)
{
    QDragLeaveEvent event;
    QApplication::sendEvent(viewport, &event);
}

} // namespace zeltest
