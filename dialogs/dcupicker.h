// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <functional>

class QGraphicsItem;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;

using AttributeLookup = std::function<ZELGraphicItemAttribute*(int loadNumber)>;

// Which of the items at a point a double click means: the rect that lies highest. The height so far is kept as a whole
// number, from 0 on, so an item at or below 0 is never meant and of two at the same whole height the first stays unless
// the other is above that number. Null when no rect qualifies.
[[nodiscard]] ZELGraphicItemAttribute* dcuAmong(const QList<QGraphicsItem*>& items, const AttributeLookup& attributeOf);

} // namespace mirn::zelchipview
