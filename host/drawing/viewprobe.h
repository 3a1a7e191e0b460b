// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPointF>
#include <QString>
#include <QTransform>

namespace mirn::zelengine {
class Device;
}
namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// Watches a chip view and reports the element under the pointer and the view's scale. It is a child of the view and
// changes nothing but the mouse tracking of its viewport.
class ViewProbe final : public QObject
{
    Q_OBJECT
public:
    // The device must live as long as the view.
    ViewProbe(zelchipview::ZelGraphicsView* view, const zelengine::Device& device);

    bool eventFilter(QObject* watched, QEvent* event) override;

    // Reports what is under the pointer again, because the elements have changed.
    void refresh();

    // Reports a change of the scale or of what is under the pointer at once, without waiting for the next paint.
    void update();

Q_SIGNALS:
    // `position` is in scene units. `element` describes the element, `site` says its place in the device. Both are
    // empty if there is no element, and `site` also if the element is not a site.
    void pointerMoved(const QPointF& position, const QString& element, const QString& site);
    void pointerLeft();

    // `factor` is screen pixels per scene unit.
    void scaleChanged(double factor);

private:
    void probe();

    zelchipview::ZelGraphicsView* const m_view;
    const zelengine::Device& m_device;
    QPoint m_pointer; // last seen position, in viewport coordinates
    bool m_isInside = false;
    QTransform m_transform; // at the last paint, including scrolling
    double m_scale = 0.0;
};

} // namespace mirn::zelchip
