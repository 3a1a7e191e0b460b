// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QPoint>
#include <QRectF>

namespace mirn::zelchipview {

class ZelGraphicsScene;
class ZelGraphicsView;

// Where the sites of a drawing are, in scene coordinates. It remembers the answers, because a site does not move.
class SiteAreas final
{
public:
    explicit SiteAreas(ZelGraphicsScene& scene); // not owned

    // Returns the area of an element by its id: that of its lowest rect, which is a site's outline, else of its lowest
    // item. Null if the drawing has no such element.
    [[nodiscard]] QRectF areaOf(int elementId);

private:
    ZelGraphicsScene& m_scene;
    QHash<int, QRectF> m_areas;
};

// Returns the element id of the topmost rect with an id (>= 0) on a shown layer at a position of the viewport; -1 if
// there is none.
[[nodiscard]] int siteAt(ZelGraphicsView& view, QPoint position);

} // namespace mirn::zelchipview
