// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>

#include <optional>

class QMouseEvent;
class QWheelEvent;

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Gestures that the program adds to the view's own. In the mode "zoom area" a drag shows the dragged rectangle and a
// click zooms in by one step there, where the view itself would zoom to the elements that were touched; Escape leaves
// the mode, and a rectangle that is being dragged then comes to nothing. Dragging with the middle button pans in every
// mode, and the wheel with Shift scrolls sideways. It is a child of the view.
class PointerGestures final : public QObject
{
    Q_OBJECT
public:
    explicit PointerGestures(zelchipview::ZelGraphicsView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool press(const QMouseEvent& event);
    bool move(const QMouseEvent& event);
    bool release(QMouseEvent& event);
    bool scrollSideways(const QWheelEvent& event);
    void addEscape();
    void leaveZoomMode();
    void letTheViewFinish(QMouseEvent& event);
    void zoomToBand(const QRect& band, QMouseEvent& release);
    void zoomInAt(QPoint position, QMouseEvent& release);

    zelchipview::ZelGraphicsView* const m_view;
    std::optional<QPoint> m_zoomFrom; // where the left button went down
    std::optional<QPoint> m_panFrom; // where the pointer was last with the middle button down
    bool m_isFinishing = false;
};

} // namespace mirn::zelchip
