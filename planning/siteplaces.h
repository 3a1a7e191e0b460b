// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QPointF>
#include <QRectF>

#include <optional>
#include <vector>

class QGraphicsItem;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Where a site is in the drawing, in scene coordinates.
struct SitePlace
{
    int id = 0; // element id
    QRectF area; // of its outline
    int layer = 0; // that its outline is on

    // Whether both are the same place.
    [[nodiscard]] bool operator==(const SitePlace& other) const
    {
        return id == other.id && area == other.area && layer == other.layer;
    }
};

// On the screen.
enum class Direction { Left, Right, Up, Down };

// Returns the item that represents an element: the lowest of its rects, which is a site's outline, else its lowest
// item. Null if the drawing has no such element.
[[nodiscard]] ZELCHIPGUI_EXPORT QGraphicsItem* outlineOf(ZelGraphicsScene& scene, int id);

// Returns the middle of an element's outline; nothing if the drawing has no such element.
[[nodiscard]] ZELCHIPGUI_EXPORT std::optional<QPointF> middleOf(ZelGraphicsScene& scene, int id);

// Returns the place of an element; nothing if the drawing has no such element.
[[nodiscard]] ZELCHIPGUI_EXPORT std::optional<SitePlace> placeOf(ZelGraphicsScene& scene, int id);

// Returns the places of those elements that the drawing has on a visible layer, in the order of the ids.
[[nodiscard]] ZELCHIPGUI_EXPORT std::vector<SitePlace> visiblePlaces(
    ZelGraphicsScene& scene, const std::vector<int>& ids);

// Returns the next place in a direction from the middle of an area, or null if there is none. A place counts only if
// its middle is less than 45 degrees off the direction; one that lies straight ahead is preferred to a nearer one
// aside.
[[nodiscard]] ZELCHIPGUI_EXPORT const SitePlace* nextPlace(
    const std::vector<SitePlace>& places, const QPointF& middle, Direction direction);

// Returns the place whose middle is nearest to a point; null only without places.
[[nodiscard]] ZELCHIPGUI_EXPORT const SitePlace* nearestPlace(
    const std::vector<SitePlace>& places, const QPointF& point);

} // namespace mirn::zelchipview
