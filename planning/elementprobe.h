// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QPoint>
#include <QString>

class QGraphicsItem;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;
class ZelGraphicsView;

// Returns null for an item that is not an element of the drawing. The controller owns the attribute.
[[nodiscard]] ZELCHIPGUI_EXPORT const ZELGraphicItemAttribute* attributeOf(const QGraphicsItem* item);

// Returns the element that a user means by pointing at a viewport position: the topmost rectangle or polygon of a
// visible layer, else the topmost line, else the topmost text. Null if there is none.
[[nodiscard]] ZELCHIPGUI_EXPORT const ZELGraphicItemAttribute* elementAt(ZelGraphicsView& view, QPoint position);

// Returns one line: the first line of the tooltip, else the name, else the kind; with the id if the drawing has one.
[[nodiscard]] ZELCHIPGUI_EXPORT QString describeElement(const ZELGraphicItemAttribute& element);

} // namespace mirn::zelchipview
