// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <functional>

class QGraphicsItem;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;

using AttributeLookup = std::function<ZELGraphicItemAttribute*(int loadNumber)>;

// Returns the attribute of the rect that a double click means among the items at a point, or null if there is none. An
// item replaces the best one so far if its z value is greater than that one's, which is truncated to a whole number and
// starts with 0. So an item with a z value of 0 or less is never chosen.
[[nodiscard]] ZELGraphicItemAttribute* dcuAmong(const QList<QGraphicsItem*>& items, const AttributeLookup& attributeOf);

} // namespace mirn::zelchipview
