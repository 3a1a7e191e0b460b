// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

class QGraphicsItem;
class QPoint;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;
class ZelGraphicsScene;
class ZelGraphicsView;

// Returns the element that a user means by pointing at a viewport position: the topmost rectangle or polygon of a
// visible layer, else the topmost line, else the topmost text. Null if there is none. The controller owns it.
[[nodiscard]] ZELCHIPGUI_EXPORT const ZELGraphicItemAttribute* elementUnder(
    const ZelGraphicsView& view, QPoint position);

// Returns the item that represents an element: the lowest of its rects, which is a site's outline, else its lowest
// item. Null if the drawing has no such element.
[[nodiscard]] ZELCHIPGUI_EXPORT QGraphicsItem* outlineOf(ZelGraphicsScene& scene, int id);

} // namespace mirn::zelchipview
