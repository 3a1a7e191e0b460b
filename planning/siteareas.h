// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QRectF>

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Where the sites of a drawing are, in scene coordinates. It remembers the answers until clear(), because a site moves
// only when another drawing is loaded.
class SiteAreas final
{
public:
    explicit SiteAreas(ZelGraphicsScene& scene); // not owned

    // Returns the area of an element's outline; null if the drawing has no such element.
    [[nodiscard]] QRectF areaOf(int elementId);
    void clear() { m_areas.clear(); }

private:
    ZelGraphicsScene& m_scene;
    QHash<int, QRectF> m_areas;
};

} // namespace mirn::zelchipview
