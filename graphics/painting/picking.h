// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

#include <functional>
#include <vector>

class QGraphicsItem;

namespace mirn::zelchipview {
class DisplayList;
struct Primitive;
} // namespace mirn::zelchipview

// Hit tests on the display list. They return what QGraphicsScene returns for the items that the loader made, but do not
// use Qt's index. Points and areas are in scene coordinates.
namespace mirn::zelchipview::picking {

// Returns the area to search for elements whose border may reach a point.
[[nodiscard]] inline QRectF around(const QPointF& point)
{
    return {point - QPointF(1, 1), QSizeF(2, 2)};
}

// Like QGraphicsScene::itemAt(): returns null if there is no item.
[[nodiscard]] QGraphicsItem* topmostItem(DisplayList& list, const QPointF& point);

// Returns whether the element at a place has not taken over its geometry yet. An empty one means that none is pending.
using IsPending = std::function<bool(int place)>;

// Returns the place of the topmost wanted element whose shape touches an area, or -1.
using IsWanted = std::function<bool(const Primitive& primitive)>;
[[nodiscard]] int topmostTouching(
    DisplayList& list, const QRectF& area, const IsPending& isPending, const IsWanted& isWanted);

// Like QGraphicsScene::items() with Qt::IntersectsItemShape: returns the places or the ids of the elements, topmost
// first.
[[nodiscard]] std::vector<int> placesTouching(DisplayList& list, const QRectF& area, const IsPending& isPending);
[[nodiscard]] std::vector<int> idsTouching(DisplayList& list, const QRectF& area, const IsPending& isPending);

// Returns a few of these places whose elements together span the same area as all of them.
[[nodiscard]] std::vector<int> outermost(DisplayList& list, const std::vector<int>& places);

} // namespace mirn::zelchipview::picking
