// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class QGraphicsItem;

namespace mirn::zelchipview {
class DisplayList;
}

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

// Like QGraphicsScene::items() with Qt::IntersectsItemShape: returns element ids, topmost first. `mayBePending` says
// that some items may not have taken over their geometry yet.
[[nodiscard]] std::vector<int> idsTouching(DisplayList& list, const QRectF& area, bool mayBePending);

} // namespace mirn::zelchipview::picking
