// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <vector>

namespace mirn::zelchipview {

// The picture that a view shows of a scene, as the scene sees it.
class ScenePicture
{
public:
    [[nodiscard]] virtual QList<int>& visibleLayers() = 0;

    // The elements at these places of the scene's display list, or all, look different now.
    virtual void repaintPlaces(const std::vector<int>& places) = 0;
    virtual void repaintAll() = 0;

    // The same without a repaint.
    virtual void forgetPlaces(const std::vector<int>& places) = 0;
    virtual void forgetAll() = 0;

protected:
    ~ScenePicture() = default;
};

} // namespace mirn::zelchipview
