// SPDX-License-Identifier: MIT
#pragma once

#include <QPoint>
#include <QString>

class QGraphicsItem;

namespace mirn::zelchipview {
class ZELGraphicItemAttribute;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace mirn::zelchip {

// Null for an item that is no element of the drawing; the attribute is the controller's.
[[nodiscard]] const zelchipview::ZELGraphicItemAttribute* attributeOf(const QGraphicsItem* item);

// The element that a person means who points at a viewport position: the topmost rectangle or polygon of a layer that
// is shown, else the topmost line, else the topmost text. Null where there is none.
[[nodiscard]] const zelchipview::ZELGraphicItemAttribute* elementAt(
    zelchipview::ZelGraphicsView& view, QPoint position);

// One line: the first line of the tooltip, else the name, else the kind; and the id where the drawing gives one.
[[nodiscard]] QString describeElement(const zelchipview::ZELGraphicItemAttribute& element);

} // namespace mirn::zelchip
