// SPDX-License-Identifier: MIT
#include "planning/ghostlayer.h"

#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dragwatch.h"
#include "planning/siteplaces.h"
#include "platform/contract/zeltext.h"

#include <QFontMetricsF>
#include <QGraphicsItem>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

namespace {

// They are seen on every fill that a drawing may have, and are none of the colours that mark elements.
const QColor GhostFill(40, 110, 225, 90);
const QColor GhostBorder(16, 66, 160);
const QColor GhostPlate(255, 255, 255, 235);
constexpr double GhostBorderWidth = 2.0; // pixels, as all of these
constexpr double PlatePadding = 3.0;
constexpr double PlateDistance = 4.0; // from the outline

bool isSame(const zelplacement& placement, const zelplacement& other)
{
    return placement.resource == other.resource && placement.site == other.site;
}

bool touchesAny(const QRectF& area, const std::vector<QRectF>& others)
{
    return std::any_of(others.begin(), others.end(), [&area](const QRectF& other) { return area.intersects(other); });
}

// Returns where a name stands: in its outline if there is room, else beside it where it covers nothing of `taken`.
QRectF plateFor(const QRectF& outline, QSizeF size, const std::vector<QRectF>& taken)
{
    const QPointF corner(size.width() / 2, size.height() / 2);
    if (size.width() <= outline.width() && size.height() <= outline.height())
        return {outline.center() - corner, size};
    const double aside = (outline.width() + size.width()) / 2 + PlateDistance;
    const double apart = (outline.height() + size.height()) / 2 + PlateDistance;
    const QPointF ways[] = {{0, -apart}, {0, apart}, {aside, 0}, {-aside, 0}, {0, -2 * apart}, {0, 2 * apart}};
    for (const QPointF& way : ways) {
        const QRectF plate(outline.center() + way - corner, size);
        if (!touchesAny(plate, taken))
            return plate;
    }
    return {outline.center() + ways[0] - corner, size};
}

} // namespace

GhostLayer::GhostLayer(ZelGraphicsView* view, const DragWatch* watch)
    : ZelViewLayer(view)
{
    connect(watch, &DragWatch::moved, this, [this](const DropPlan& plan) { showPlacements(plan.placements); });
    connect(watch, &DragWatch::ended, this, [this] { showPlacements({}); });
}

GhostLayer::~GhostLayer() = default;

void GhostLayer::showPlacements(const std::vector<zelplacement>& placements)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene)
        return;
    const bool isSamePlace = m_transform == view()->viewportTransform();
    if (isSamePlace
        && std::equal(placements.begin(), placements.end(), m_placements.begin(), m_placements.end(), isSame))
        return;
    repaintGhosts();
    m_placements = placements;
    m_transform = view()->viewportTransform();
    m_ghosts.clear();
    for (const zelplacement& placement : placements) {
        if (const QGraphicsItem* outline = outlineOf(*scene, placement.site))
            m_ghosts.push_back({fromEngineText(placement.resource).section(QLatin1Char('/'), -1),
                outline->mapToScene(outline->shape())});
    }
    repaintGhosts();
}

// The names stand beside the outlines, and they may be somewhere else than at the last paint.
void GhostLayer::repaintGhosts()
{
    if (!m_ghosts.empty())
        update();
}

std::vector<QRectF> GhostLayer::outlinesInPixels() const
{
    std::vector<QRectF> outlines;
    for (const Ghost& ghost : m_ghosts)
        outlines.push_back(sceneToPicture().map(ghost.outline).boundingRect());
    return outlines;
}

void GhostLayer::paint(QPainter& painter, const QRect& /*exposed*/)
{
    if (m_ghosts.empty() || !view())
        return;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(view()->font());
    const QFontMetricsF metrics(view()->font());
    std::vector<QRectF> taken = outlinesInPixels();
    for (std::size_t i = 0; i < m_ghosts.size(); ++i) {
        painter.setPen(QPen(GhostBorder, GhostBorderWidth));
        painter.setBrush(GhostFill);
        painter.drawPath(sceneToPicture().map(m_ghosts[i].outline));
        const QSizeF text(metrics.horizontalAdvance(m_ghosts[i].name), metrics.height());
        const QRectF plate = plateFor(taken[i], text + QSizeF(2 * PlatePadding, 2 * PlatePadding), taken);
        painter.setPen(Qt::NoPen);
        painter.setBrush(GhostPlate);
        painter.drawRoundedRect(plate, PlatePadding, PlatePadding);
        painter.setPen(GhostBorder);
        painter.drawText(plate, Qt::AlignCenter, m_ghosts[i].name);
        taken.push_back(plate);
    }
}

} // namespace mirn::zelchipview
