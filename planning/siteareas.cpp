// SPDX-License-Identifier: MIT
#include "planning/siteareas.h"

namespace mirn::zelchipview {

SiteAreas::SiteAreas(ZelGraphicsScene& scene)
    : m_scene(scene)
{ }

const std::optional<SitePlace>& SiteAreas::placeOf(int elementId)
{
    auto known = m_places.find(elementId);
    if (known == m_places.end())
        known = m_places.insert(elementId, zelchipview::placeOf(m_scene, elementId));
    return *known;
}

} // namespace mirn::zelchipview
