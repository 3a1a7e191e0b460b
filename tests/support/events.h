// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QDragMoveEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QMouseEvent>
#include <QTest>
#include <QTimer>
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

// A mouse button's event at a position of a widget, which need not be the pointer's.
inline void sendMouse(
    QWidget* widget, QEvent::Type type, QPoint position, Qt::MouseButton button, Qt::MouseButtons buttons)
{
    QMouseEvent event(type, position, widget->mapToGlobal(position), button, buttons, Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
}

// Answers the question that is asked next, with Escape where no button is named, and keeps its text.
inline void answerNextQuestion(QMessageBox::StandardButton button, QString* text = nullptr)
{
    QTimer::singleShot(0, qApp, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        if (text)
            *text = box->text();
        if (button == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(button)->click();
    });
}

// Opens the context menu at a position and closes it again. Returns its actions; none where no menu comes up.
inline QList<QAction*> actionsOfMenuAt(QWidget* viewport, QPoint position)
{
    QList<QAction*> actions;
    QTimer::singleShot(0, qApp, [&actions] {
        if (auto* popup = QApplication::activePopupWidget()) {
            actions = popup->actions();
            popup->close();
        }
    });
    openMenu(viewport, position);
    QCoreApplication::processEvents();
    return actions;
}

} // namespace zeltest
