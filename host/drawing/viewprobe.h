// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QString>
#include <QTransform>

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Watches a chip view and reports what the pointer is on and at which scale the view is. Child of the view, changes
// nothing but the mouse tracking of its viewport.
class ViewProbe final : public QObject
{
    Q_OBJECT
public:
    explicit ViewProbe(zelchipview::ZelGraphicsView* view);

    bool eventFilter(QObject* watched, QEvent* event) override;

    // Reports a change of scale or of what is below the pointer at once; without it that waits for the next paint.
    void update();

Q_SIGNALS:
    // `position` is in scene units, `element` is empty where there is none.
    void pointerMoved(const QPointF& position, const QString& element);
    void pointerLeft();

    // `factor` is screen pixels per scene unit, `scale` the value that layer ranges are compared with.
    void scaleChanged(double factor, double scale);

private:
    void probe();

    zelchipview::ZelGraphicsView* const m_view;
    QPoint m_pointer; // in the viewport, where it was seen last
    bool m_isInside = false;
    QTransform m_transform; // of the last paint, with scrolling
    double m_scale = 0.0;
};

} // namespace mirn::zelchip
