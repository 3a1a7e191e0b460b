// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class QGraphicsItem;

namespace mirn::zelchipview {
class DisplayList;
}

// Which elements lie at a place: the answers of QGraphicsScene for the items that the loader made, from the display
// list's index instead of Qt's.
namespace mirn::zelchipview::picking {

// Where the elements lie whose borders may reach a point.
[[nodiscard]] inline QRectF around(const QPointF& point)
{
    return {point - QPointF(1, 1), QSizeF(2, 2)};
}

// As QGraphicsScene::itemAt(); null where there is none.
[[nodiscard]] QGraphicsItem* topmostItem(DisplayList& list, const QPointF& point);

// As QGraphicsScene::items() by shape, from the topmost to the lowest. `mayBePending`: some items may not have been
// given their geometry yet.
[[nodiscard]] std::vector<int> idsTouching(DisplayList& list, const QRectF& area, bool mayBePending);

} // namespace mirn::zelchipview::picking
