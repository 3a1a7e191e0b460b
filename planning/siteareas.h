// SPDX-License-Identifier: MIT
#pragma once

#include "planning/siteplaces.h"

#include <QHash>

#include <optional>

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Where the sites of a drawing are, in scene coordinates. It remembers the answers until clear(), because a site moves
// only when another drawing is loaded.
class SiteAreas final
{
public:
    explicit SiteAreas(ZelGraphicsScene& scene); // not owned

    // Returns the place of an element; nothing if the drawing has no such element.
    [[nodiscard]] const std::optional<SitePlace>& placeOf(int elementId);
    void clear() { m_places.clear(); }

private:
    ZelGraphicsScene& m_scene;
    QHash<int, std::optional<SitePlace>> m_places;
};

} // namespace mirn::zelchipview
