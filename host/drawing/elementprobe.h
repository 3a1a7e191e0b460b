// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QGraphicsItem;

namespace mirn::zelchipview {
class ZELGraphicItemAttribute;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

// Returns null for an item that is not an element of the drawing. The controller owns the attribute.
[[nodiscard]] const zelchipview::ZELGraphicItemAttribute* attributeOf(const QGraphicsItem* item);

// Returns one line: the first line of the tooltip, else the name, else the kind; with the id if the drawing has one.
[[nodiscard]] QString describeElement(const zelchipview::ZELGraphicItemAttribute& element);

} // namespace mirn::zelchip
