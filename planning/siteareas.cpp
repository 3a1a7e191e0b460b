// SPDX-License-Identifier: MIT
#include "planning/siteareas.h"

#include "planning/siteplaces.h"

#include <QGraphicsItem>

namespace mirn::zelchipview {

SiteAreas::SiteAreas(ZelGraphicsScene& scene)
    : m_scene(scene)
{ }

QRectF SiteAreas::areaOf(int elementId)
{
    const auto known = m_areas.constFind(elementId);
    if (known != m_areas.constEnd())
        return *known;
    const QGraphicsItem* outline = outlineOf(m_scene, elementId);
    const QRectF area = outline ? outline->sceneBoundingRect() : QRectF();
    m_areas.insert(elementId, area);
    return area;
}

} // namespace mirn::zelchipview
