// SPDX-License-Identifier: MIT
#include "host/gestures/dragnavigation.h"

#include "graphics/zelgraphicsview.h"
#include "planning/dropposition.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDragMoveEvent>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace mirn::zelchip {

namespace {

constexpr int BorderPixels = 32; // the drawing scrolls while the pointer is so near to the border, or nearer
constexpr int StepMilliseconds = 20;
constexpr int MostPixels = 24; // per step, at the border itself

// Returns the speed along one axis: 0 in the middle, faster the nearer the pointer is to one of the ends.
int speedAt(int position, int length)
{
    const int border = std::min(BorderPixels, length / 4);
    if (border <= 0)
        return 0;
    const int intoStart = std::clamp(border - position, 0, border);
    const int intoEnd = std::clamp(position - (length - 1 - border), 0, border);
    return (intoEnd - intoStart) * MostPixels / border;
}

} // namespace

DragNavigation::DragNavigation(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    m_scrolling.setInterval(StepMilliseconds);
    connect(&m_scrolling, &QTimer::timeout, this, &DragNavigation::scroll);
    m_view->viewport()->installEventFilter(this);
}

bool DragNavigation::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        if (watched == m_view->viewport())
            follow(static_cast<QDropEvent&>(*event));
        break;
    case QEvent::DragLeave:
    case QEvent::Drop:
    case QEvent::WindowBlocked: // by a dialog: the end of the drag is not reported any more
        if (watched == m_view->viewport())
            end();
        break;
    case QEvent::Wheel:
        return m_isDragging && watched->isWindowType() && turnWheel(static_cast<QWheelEvent&>(*event));
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void DragNavigation::follow(const QDropEvent& event)
{
    const QPoint position = zelchipview::dropPosition(event);
    const QSize size = m_view->viewport()->size();
    m_speed = {speedAt(position.x(), size.width()), speedAt(position.y(), size.height())};
    if (m_speed.isNull())
        m_scrolling.stop();
    else if (!m_scrolling.isActive())
        m_scrolling.start();
    // While a drag goes on, Qt's own filter of the application takes all wheel events. The filter that was installed
    // last comes first.
    if (!m_isDragging)
        QCoreApplication::instance()->installEventFilter(this);
    m_isDragging = true;
}

void DragNavigation::end()
{
    m_scrolling.stop();
    m_isDragging = false;
    QCoreApplication::instance()->removeEventFilter(this);
}

void DragNavigation::scroll()
{
    QScrollBar* horizontal = m_view->horizontalScrollBar();
    QScrollBar* vertical = m_view->verticalScrollBar();
    const QPoint before(horizontal->value(), vertical->value());
    horizontal->setValue(before.x() + m_speed.x());
    vertical->setValue(before.y() + m_speed.y());
    if (before != QPoint(horizontal->value(), vertical->value()))
        nudgePointer();
}

// The event was sent to the window, because no widget receives wheel events during a drag.
bool DragNavigation::turnWheel(const QWheelEvent& event)
{
    QWidget* viewport = m_view->viewport();
    const QPoint position = viewport->mapFromGlobal(event.globalPosition().toPoint());
    if (!viewport->rect().contains(position))
        return false;
    QWheelEvent turned(position, event.globalPosition(), event.pixelDelta(), event.angleDelta(), Qt::NoButton,
        event.modifiers(), event.phase(), event.inverted());
    QCoreApplication::sendEvent(viewport, &turned);
    QMetaObject::invokeMethod(this, &DragNavigation::nudgePointer, Qt::QueuedConnection); // after the zoom has settled
    return true;
}

// Qt looks for the site under the pointer only when the pointer moves, but it was the drawing that moved.
void DragNavigation::nudgePointer()
{
    if (!m_isDragging)
        return;
    QCursor::setPos(QCursor::pos() + QPoint(m_nudge, 0));
    m_nudge = -m_nudge;
}

} // namespace mirn::zelchip
