// SPDX-License-Identifier: MIT
#include "planning/candidatelayer.h"

#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/elementidset.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsView>
#include <QList>
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

// Adds a frame inside a rectangle, in parts that do not overlap: a translucent colour would show where they do.
void addFrame(QVector<QRect>& parts, const QRect& outside, int breadth)
{
    const int inner = outside.height() - 2 * breadth;
    parts.append(QRect(outside.left(), outside.top(), outside.width(), breadth));
    parts.append(QRect(outside.left(), outside.bottom() + 1 - breadth, outside.width(), breadth));
    parts.append(QRect(outside.left(), outside.top() + breadth, breadth, inner));
    parts.append(QRect(outside.right() + 1 - breadth, outside.top() + breadth, breadth, inner));
}

} // namespace

CandidateLayer::CandidateLayer(QGraphicsView* view)
    : ZelViewLayer(view)
{ }

void CandidateLayer::setCandidates(std::vector<SitePlace> candidates)
{
    if (candidates.empty() && m_candidates.empty())
        return;
    m_candidates = std::move(candidates);
    update();
}

// A site that is lit as a probable one shows that, and only that.
void CandidateLayer::paint(QPainter& painter, const QRect& exposed)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (m_candidates.empty() || !scene)
        return;
    const QList<int> layers = scene->getVisibleLayers();
    const QTransform transform = sceneToPicture();
    const ElementIdSet& lit = DrawingController::current().highlightedIds();
    QVector<QRect> tints;
    QVector<QRect> edges;
    QVector<QRect> innerEdges;
    for (const SitePlace& candidate : m_candidates) {
        const QRect pixels = transform.mapRect(candidate.area).toAlignedRect();
        if (!pixels.intersects(exposed) || lit.contains(candidate.id) || !layers.contains(candidate.layer))
            continue;
        tints.append(pixels);
        const int side = qMin(pixels.width(), pixels.height());
        if (side >= SmallestWithEdge)
            addFrame(edges, pixels, side < SmallestWithInnerEdge ? 1 : EdgeBreadth);
        if (side >= SmallestWithInnerEdge)
            addFrame(innerEdges, pixels.adjusted(EdgeBreadth, EdgeBreadth, -EdgeBreadth, -EdgeBreadth), 1);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    for (const auto& [color, rects] : {std::pair(CandidateTint, &tints), std::pair(CandidateEdge, &edges),
             std::pair(CandidateInnerEdge, &innerEdges)}) {
        painter.setBrush(color);
        painter.drawRects(*rects);
    }
}

// On white, as most drawings are light.
void CandidateLayer::paintSample(QPainter& painter, const QRect& area)
{
    QVector<QRect> edge;
    addFrame(edge, area, EdgeBreadth);
    painter.fillRect(area, Qt::white);
    painter.fillRect(area, CandidateTint);
    painter.setPen(Qt::NoPen);
    painter.setBrush(CandidateEdge);
    painter.drawRects(edge);
}

} // namespace mirn::zelchipview
