// SPDX-License-Identifier: MIT
#include "graphics/painting/picking.h"

#include "graphics/elements/chipelement.h"
#include "graphics/elements/enlarged.h"
#include "graphics/painting/displaylist.h"

#include <QGraphicsItem>
#include <QPainterPath>

#include <cmath>

namespace mirn::zelchipview::picking {

namespace {

constexpr double Hair = 1e-5; // the assumed width of a shape without a width, in scene units

// Unlike QRectF::contains(), this accepts a rect without width or height.
bool encloses(const QRectF& area, const QRectF& rect)
{
    return area.left() <= rect.left() && rect.right() <= area.right() && area.top() <= rect.top()
        && rect.bottom() <= area.bottom();
}

// This is Qt's rule: the right and the lower border do not belong to an item unless it has no width or no height.
bool boundsContain(const QRectF& bounds, const QPointF& position)
{
    const double right = bounds.right() + (bounds.width() == 0 ? Hair : 0);
    const double bottom = bounds.bottom() + (bounds.height() == 0 ? Hair : 0);
    return position.x() >= bounds.left() - Hair && position.x() < right && position.y() >= bounds.top() - Hair
        && position.y() < bottom;
}

// Returns whether a position certainly lies in a rect: further inside than its border reaches.
bool isWithinBorder(const Primitive& primitive, const QRectF& bounds, const QPointF& position)
{
    if (primitive.kind != Primitive::Rect)
        return false;
    const QRectF inner = enlarged(bounds, -std::abs(primitive.strokeWidth) - Hair);
    return inner.isValid() && inner.contains(position); // a rect with a negative size contains positions, too
}

} // namespace

QGraphicsItem* topmostItem(DisplayList& list, const QPointF& point)
{
    const std::vector<int>& places = list.placesIn(around(point));
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        if (!enlarged(list.boundsOf(*place), 1).contains(point))
            continue;
        QGraphicsItem* item = list.element(*place)->graphicsItem();
        const QPointF position = item->mapFromScene(point);
        const QRectF bounds = item->boundingRect();
        if (!boundsContain(bounds, position))
            continue;
        // contains() builds the item's shape at each call, so it is called only where a border may be.
        if (isWithinBorder(list.primitive(*place), bounds, position) || item->contains(position))
            return item;
    }
    return nullptr;
}

std::vector<int> idsTouching(DisplayList& list, const QRectF& area, bool mayBePending)
{
    const std::vector<ElementGrid::Found>& all = list.foundIn(area, area);
    QPainterPath path;
    path.addRect(area);
    std::vector<int> ids;
    ids.reserve(all.size());
    for (auto found = all.rbegin(); found != all.rend(); ++found) {
        const int place = found->place;
        const Primitive& primitive = list.primitive(place);
        // An element inside the area needs no test of its shape, unless it is pending or flat.
        const bool isPlaced = !mayBePending || !list.element(place)->isPending();
        const bool isInside = found->isInside || encloses(area, list.boundsOf(place));
        if (!isPlaced || !isInside || primitive.isFlat()) {
            QGraphicsItem* item = list.element(place)->graphicsItem();
            if (!item->collidesWithPath(item->mapFromScene(path), Qt::IntersectsItemShape))
                continue;
        }
        ids.push_back(primitive.elementId);
    }
    return ids;
}

} // namespace mirn::zelchipview::picking
