// SPDX-License-Identifier: MIT
#include "host/drawing/drawingfit.h"

#include "graphics/zelgraphicsview.h"

#include <QEvent>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPen>

namespace mirn::zelchip {

namespace {

constexpr double ItemsMargin = 0.04; // more than the scroll bars that appear with the zoom take away

} // namespace

void zoomToArea(zelchipview::ZelGraphicsView& view, const QRectF& area, double marginShare)
{
    const double margin = marginShare * qMax(area.width(), area.height());
    QGraphicsRectItem frame(area.adjusted(-margin, -margin, margin, margin));
    frame.setPen(Qt::NoPen);
    QList<QGraphicsItem*> items{&frame};
    view.zoomTo(&items);
}

void zoomToItems(zelchipview::ZelGraphicsView& view, const QList<QGraphicsItem*>& items)
{
    QRectF area;
    for (const QGraphicsItem* item : items)
        area |= item->sceneBoundingRect();
    if (!items.isEmpty())
        zoomToArea(view, area, ItemsMargin);
}

DrawingFit::DrawingFit(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    m_refit.setSingleShot(true);
    m_refit.setInterval(0);
    connect(&m_refit, &QTimer::timeout, this, &DrawingFit::refit);
    m_view->viewport()->installEventFilter(this);
}

void DrawingFit::fit()
{
    // The space of the scroll bars can be used, because a fitted drawing needs none.
    setScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    zoomToArea(*m_view, m_view->sceneRect(), DrawingMargin);
    setScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_fittedTransform = m_view->transform();
    m_refit.stop();
}

// Whatever has zoomed since the view was resized has the last word.
void DrawingFit::refit()
{
    m_refit.stop();
    if (m_view->transform() != m_fittedTransform)
        return;
    fit();
    Q_EMIT refitted();
}

void DrawingFit::settle()
{
    if (m_refit.isActive())
        refit();
}

void DrawingFit::setScrollBarPolicy(Qt::ScrollBarPolicy policy)
{
    m_view->setHorizontalScrollBarPolicy(policy);
    m_view->setVerticalScrollBarPolicy(policy);
}

bool DrawingFit::eventFilter(QObject* watched, QEvent* event)
{
    // The timer fits after the view itself has handled the event.
    if (event->type() == QEvent::Resize && m_view->transform() == m_fittedTransform)
        m_refit.start();
    return QObject::eventFilter(watched, event);
}

} // namespace mirn::zelchip
