// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Keeps the point of the drawing that is below the pointer there while a wheel or a key zooms. The view's own anchor
// is a pixel or two off at each step, always to the same side, so that the drawing creeps away. Child of the view.
class ZoomAnchor final : public QObject
{
    Q_OBJECT
public:
    explicit ZoomAnchor(zelchipview::ZelGraphicsView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void hold(QPointF viewportPosition);
    void settle();
    [[nodiscard]] QPointF offset() const;
    [[nodiscard]] QPointF pointerOrCenter() const;

    zelchipview::ZelGraphicsView* const m_view;
    QPointF m_viewportPosition;
    QPointF m_scenePosition;
    bool m_isHolding = false;
};

} // namespace mirn::zelchip
