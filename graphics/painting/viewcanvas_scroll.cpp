// SPDX-License-Identifier: MIT
#include "graphics/elements/enlarged.h"
#include "graphics/painting/viewcanvas.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <numeric>

// Moving the picture, and finding out what a move changes.

namespace mirn::zelchipview {

namespace {

constexpr int BorderBreadth = 2; // width in pixels of the strips along the picture's borders where cut-off shapes show
constexpr int MostParts = 96; // that are told one by one after a scroll
constexpr double LongEdge = 64; // pixels; the opacity of a cut-off edge depends on the length that is left of it

bool isWhole(double value)
{
    return value == std::round(value);
}

} // namespace

QRegion ViewCanvas::scrollTo(const Scene& scene)
{
    const QTransform before = m_toPicture;
    const std::size_t first = m_dirty.all().size();
    if (needsAll(scene) || !scroll(scene) || m_dirty.areMostOf(m_picture.size()))
        return m_picture.rect();
    QRegion parts;
    for (std::size_t n = first; n < m_clippedEnd && parts.rectCount() <= MostParts; ++n)
        parts |= m_dirty.all()[n];
    if (parts.rectCount() <= MostParts)
        return parts;
    // They lie along two borders or four.
    const bool isAcross = m_toPicture.dx() != before.dx();
    const bool isDown = m_toPicture.dy() != before.dy();
    const QPoint middle = m_picture.rect().center();
    QRect around[4];
    for (std::size_t n = first; n < m_clippedEnd; ++n) {
        const QRect& part = m_dirty.all()[n];
        const int right = isAcross && part.center().x() > middle.x() ? 1 : 0;
        const int lower = isDown && part.center().y() > middle.y() ? 2 : 0;
        around[right + lower] |= part;
    }
    return std::accumulate(std::begin(around), std::end(around), QRegion(), std::bit_or<>());
}

// Returns false if the picture cannot be reused: nothing of it stays visible, it moves by a fraction of a pixel, or its
// background does not move along.
bool ViewCanvas::scroll(const Scene& scene)
{
    const double dx = scene.toPicture.dx() - m_toPicture.dx();
    const double dy = scene.toPicture.dy() - m_toPicture.dy();
    m_clippedEnd = 0;
    if (dx == 0 && dy == 0)
        return true;
    // A background with a pattern or an image does not move along.
    const Qt::BrushStyle behind = scene.backgroundBrush.style();
    if (behind != Qt::NoBrush && behind != Qt::SolidPattern)
        return false;
    const int width = scene.size.width();
    const int height = scene.size.height();
    if (!isWhole(dx) || !isWhole(dy) || std::abs(dx) >= width || std::abs(dy) >= height || scene.isScaled)
        return false;
    const QPoint way(static_cast<int>(dx), static_cast<int>(dy));
    m_origin = QPoint(wrapped(m_origin.x() - way.x(), width), wrapped(m_origin.y() - way.y(), height));
    m_dirty.move(way);
    const std::vector<QRect> borders = edgeStripsFor(way);
    invalidateClippedShapes(borders, way, way); // the areas that they covered before, moved along
    m_toPicture = scene.toPicture;
    invalidateClippedShapes(borders, QPoint(), -way);
    m_clippedEnd = m_dirty.all().size();
    // QPainter rounds shapes that are cut off at the border of an image differently from those inside. So the strips
    // along both borders are painted, and the one that has left a border together with what came into sight there.
    const QPoint came(std::abs(way.x()) + BorderBreadth, std::abs(way.y()) + BorderBreadth);
    if (way.x() != 0) {
        mark(QRect(way.x() > 0 ? 0 : width - came.x(), 0, came.x(), height));
        mark(QRect(way.x() > 0 ? width - BorderBreadth : 0, 0, BorderBreadth, height));
    }
    if (way.y() != 0) {
        mark(QRect(0, way.y() > 0 ? 0 : height - came.y(), width, came.y()));
        mark(QRect(0, way.y() > 0 ? height - BorderBreadth : 0, width, BorderBreadth));
    }
    return true;
}

// Returns strips along the borders that something moves across.
std::vector<QRect> ViewCanvas::edgeStripsFor(QPoint way) const
{
    const int width = m_picture.width();
    const int height = m_picture.height();
    std::vector<QRect> borders;
    if (way.x() != 0)
        borders = {QRect(0, 0, BorderBreadth, height), QRect(width - BorderBreadth, 0, BorderBreadth, height)};
    if (way.y() != 0) {
        borders.emplace_back(0, 0, width, BorderBreadth);
        borders.emplace_back(0, height - BorderBreadth, width, BorderBreadth);
    }
    return borders;
}

// Whether one of the coordinates changes its sign when the picture is scrolled by `way`.
bool ViewCanvas::crossesZero(const QPointF& point, QPoint way) const
{
    const QPointF before = m_toPicture.map(point);
    const QPointF after = before + way;
    return (before.x() < 0) != (after.x() < 0) || (before.y() < 0) != (after.y() < 0);
}

// How QPainter cuts off a slanted shape or a wide border depends on where the picture's border is, and it changes
// pixels along the whole shape. The position of a text is rounded towards zero. Such shapes cannot be moved with the
// picture, so they are repainted. Both distances begin where m_toPicture maps a shape: `way` leads to where its pixels
// are now, `other` to where it was before the scroll or will be after it.
void ViewCanvas::invalidateClippedShapes(const std::vector<QRect>& borders, QPoint way, QPoint other)
{
    // Most primitives are small rects, which can be moved. The scale is the largest one, should the view be rotated.
    const double scale = std::max(std::abs(m_toPicture.m11()) + std::abs(m_toPicture.m21()),
        std::abs(m_toPicture.m12()) + std::abs(m_toPicture.m22()));
    const auto mayMatter = [scale](const Primitive& primitive) {
        if (primitive.kind != Primitive::Rect)
            return true;
        const double penWidth = std::abs(primitive.strokeWidth);
        const double longest = std::max(std::abs(primitive.c), std::abs(primitive.d)) + penWidth;
        return scale * penWidth >= WidePenThreshold || scale * longest + 2 * PenMargin > LongEdge;
    };
    const auto markShape = [&](const Primitive& primitive, const QRectF& bounds, const QRect&) {
        const double penWidth = primitive.strokeWidth * m_toPicture.m11();
        switch (primitive.kind) {
        case Primitive::Text:
            if (crossesZero(QPointF(primitive.a, primitive.b), other))
                mark(bounds, way);
            break;
        case Primitive::Rect:
            if (penWidth >= WidePenThreshold || std::max(bounds.width(), bounds.height()) > LongEdge)
                markEdges(m_toPicture.mapRect(primitive.rect()), std::max(penWidth, 0.0) / 2 + PenMargin, way);
            break;
        default:
            if (primitive.isSlanted() || penWidth >= WidePenThreshold)
                mark(bounds, way);
        }
    };
    m_painter.visitTouching(m_toPicture, borders, m_layers, mayMatter, markShape);
}

void ViewCanvas::markEdges(const QRectF& rect, double reach, QPoint way)
{
    const QRectF outer = rect.adjusted(-reach, -reach, reach, reach);
    mark(QRectF(outer.left(), outer.top(), outer.width(), 2 * reach), way);
    mark(QRectF(outer.left(), rect.bottom() - reach, outer.width(), 2 * reach), way);
    mark(QRectF(outer.left(), outer.top(), 2 * reach, outer.height()), way);
    mark(QRectF(rect.right() - reach, outer.top(), 2 * reach, outer.height()), way);
}

} // namespace mirn::zelchipview
