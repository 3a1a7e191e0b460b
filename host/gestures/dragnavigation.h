// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QTimer>

class QDropEvent;
class QWheelEvent;

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Moves the drawing while a resource is dragged over it, so that every site can be reached: near a border of the view
// the drawing scrolls, and the wheel scrolls and zooms as it does without a drag. It is a child of the view.
class DragNavigation final : public QObject
{
    Q_OBJECT
public:
    explicit DragNavigation(zelchipview::ZelGraphicsView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow(const QDropEvent& event);
    void end();
    void scroll();
    bool turnWheel(const QWheelEvent& event);
    void nudgePointer();

    zelchipview::ZelGraphicsView* const m_view;
    QTimer m_scrolling; // runs while the pointer is near a border
    QPoint m_speed; // pixels per step of the timer
    int m_nudge = 1; // pixels; to the right and to the left in turn
    bool m_isDragging = false;
};

} // namespace mirn::zelchip
