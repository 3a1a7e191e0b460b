// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QTimer>
#include <QTransform>

class QGraphicsItem;

namespace mirn::zelchipview {
class ZelGraphicsView;
}

namespace mirn::zelchip {

// The room around the whole drawing when it fits: on each side, as a fraction of its larger side.
constexpr double DrawingMargin = 0.01;

// Shows the whole drawing in a view and keeps it fitted while the view is resized, until the user zooms. It is a child
// of the view.
class DrawingFit final : public QObject
{
    Q_OBJECT
public:
    explicit DrawingFit(zelchipview::ZelGraphicsView* view);

    void fit();

    // Carries out at once a fit that is due because the view was resized.
    void settle();

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted after the drawing was fitted to another size of the view.
    void refitted();

private:
    void refit();
    void setScrollBarPolicy(Qt::ScrollBarPolicy policy);

    zelchipview::ZelGraphicsView* const m_view;
    QTransform m_fittedTransform; // set by fit(); a different one means that the user has zoomed
    QTimer m_refit; // fits once after a series of resizes
};

// Zooms to an area of the scene with a margin on each side, as a fraction of the larger side.
void zoomToArea(zelchipview::ZelGraphicsView& view, const QRectF& area, double marginShare);

// Zooms to the items with a small margin. Without items the view stays as it is.
void zoomToItems(zelchipview::ZelGraphicsView& view, const QList<QGraphicsItem*>& items);

} // namespace mirn::zelchip
