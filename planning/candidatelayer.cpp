// SPDX-License-Identifier: MIT
#include "planning/candidatelayer.h"

#include <QGraphicsView>
#include <QPainter>
#include <QVector>

#include <utility>

namespace mirn::zelchipview {

namespace {

const QColor CandidateTint(0x1b, 0x6e, 0xe0, 56);
const QColor CandidateEdge(0x0b, 0x3d, 0x91);
const QColor CandidateInnerEdge(255, 255, 255, 190);
constexpr int SmallestWithEdge = 4; // pixels
constexpr int SmallestWithInnerEdge = 12;
constexpr int EdgeBreadth = 2;

} // namespace

CandidateLayer::CandidateLayer(QGraphicsView* view)
    : ZelViewLayer(view)
{ }

void CandidateLayer::setAreas(std::vector<QRectF> areas)
{
    if (areas.empty() && m_areas.empty())
        return;
    m_areas = std::move(areas);
    update();
}

void CandidateLayer::paint(QPainter& painter, const QRect& exposed)
{
    if (m_areas.empty() || !view())
        return;
    const QTransform transform = view()->viewportTransform();
    QVector<QRect> tints;
    QVector<QRect> edges; // a QRect that is stroked is one pixel larger than one that is filled
    QVector<QRect> innerEdges;
    for (const QRectF& area : m_areas) {
        const QRect pixels = transform.mapRect(area).toAlignedRect();
        if (!pixels.intersects(exposed))
            continue;
        tints.append(pixels);
        const int side = qMin(pixels.width(), pixels.height());
        if (side >= SmallestWithEdge)
            edges.append(pixels.adjusted(0, 0, -1, -1));
        if (side < SmallestWithInnerEdge)
            continue;
        for (int inset = 1; inset < EdgeBreadth; ++inset)
            edges.append(pixels.adjusted(inset, inset, -inset - 1, -inset - 1));
        innerEdges.append(pixels.adjusted(EdgeBreadth, EdgeBreadth, -EdgeBreadth - 1, -EdgeBreadth - 1));
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    painter.setBrush(CandidateTint);
    painter.drawRects(tints);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(CandidateEdge);
    painter.drawRects(edges);
    painter.setPen(CandidateInnerEdge);
    painter.drawRects(innerEdges);
}

} // namespace mirn::zelchipview
