// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Keeps the point under the pointer in place while the wheel or a key zooms. The view's own anchor is off by a pixel or
// two at each step, always to the same side, so that the drawing would drift away. It is a child of the view.
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
