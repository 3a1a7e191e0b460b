// SPDX-License-Identifier: MIT
#include "host/drawingfit.h"

#include "graphics/zelgraphicsview.h"

#include <QEvent>
#include <QGraphicsRectItem>
#include <QGraphicsScene>
#include <QPen>

namespace mirn::zelchip {

namespace {

constexpr double MarginShare = 0.01; // of the drawing's larger side, on each side

} // namespace

DrawingFit::DrawingFit(zelchipview::ZelGraphicsView* view)
    : QObject(view)
    , m_view(view)
{
    m_refit.setSingleShot(true);
    m_refit.setInterval(0);
    connect(&m_refit, &QTimer::timeout, this, &DrawingFit::fit);
    m_view->viewport()->installEventFilter(this);
}

void DrawingFit::fit()
{
    const QRectF drawing = m_view->sceneRect();
    const double margin = MarginShare * qMax(drawing.width(), drawing.height());
    QGraphicsRectItem frame(drawing.adjusted(-margin, -margin, margin, margin));
    frame.setPen(Qt::NoPen);
    QList<QGraphicsItem*> items{&frame};
    // The room of the scroll bars counts: what fits needs none.
    setScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_view->zoomTo(&items);
    setScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_fittedTransform = m_view->transform();
    m_refit.stop();
}

void DrawingFit::setScrollBarPolicy(Qt::ScrollBarPolicy policy)
{
    m_view->setHorizontalScrollBarPolicy(policy);
    m_view->setVerticalScrollBarPolicy(policy);
}

bool DrawingFit::eventFilter(QObject* watched, QEvent* event)
{
    // Afterwards, when the view itself has answered the event.
    if (event->type() == QEvent::Resize && m_view->transform() == m_fittedTransform)
        m_refit.start();
    return QObject::eventFilter(watched, event);
}

} // namespace mirn::zelchip
