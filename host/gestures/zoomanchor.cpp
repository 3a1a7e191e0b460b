// SPDX-License-Identifier: MIT
#include "host/gestures/zoomanchor.h"

#include "graphics/zelgraphicsview.h"

#include <QCursor>
#include <QKeyEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace mirn::zelchip {

namespace {

constexpr double WholePixelError = 1.0; // pixels: half a pixel in both directions

} // namespace

ZoomAnchor::ZoomAnchor(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    m_view->installEventFilter(this); // sees the keys
    m_view->viewport()->installEventFilter(this); // sees the wheel
}

bool ZoomAnchor::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Wheel && watched == m_view->viewport()) {
        const auto* wheel = static_cast<QWheelEvent*>(event);
        if (wheel->modifiers() & Qt::ControlModifier)
            hold(wheel->position());
    } else if (event->type() == QEvent::KeyPress && watched == m_view) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Plus || key == Qt::Key_Minus)
            hold(pointerOrCenter());
    }
    return QObject::eventFilter(watched, event);
}

// The view handles the event after this; a queued call runs after that and still before the next paint.
void ZoomAnchor::hold(QPointF viewportPosition)
{
    settle();
    // A pointer that has not moved keeps its scene position, because the rounding of scroll bars to whole pixels would
    // add up.
    if (viewportPosition != m_viewportPosition || offset().manhattanLength() > WholePixelError)
        m_scenePosition = m_view->viewportTransform().inverted().map(viewportPosition);
    m_viewportPosition = viewportPosition;
    m_isHolding = true;
    QMetaObject::invokeMethod(this, &ZoomAnchor::settle, Qt::QueuedConnection);
}

void ZoomAnchor::settle()
{
    if (!m_isHolding)
        return;
    m_isHolding = false;
    const QPoint way = offset().toPoint();
    QScrollBar* horizontal = m_view->horizontalScrollBar();
    QScrollBar* vertical = m_view->verticalScrollBar();
    horizontal->setValue(horizontal->value() + way.x());
    vertical->setValue(vertical->value() + way.y());
}

// How far the held point has moved from its position, in pixels.
QPointF ZoomAnchor::offset() const
{
    return m_view->viewportTransform().map(m_scenePosition) - m_viewportPosition;
}

QPointF ZoomAnchor::pointerOrCenter() const
{
    const QWidget* viewport = m_view->viewport();
    return viewport->underMouse() ? viewport->mapFromGlobal(QCursor::pos()) : viewport->rect().center();
}

} // namespace mirn::zelchip
