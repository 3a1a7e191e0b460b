// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

#include <vector>

namespace mirn::zelchipview {

// The scene's interface to the picture that a view has cached of it. ViewPicture implements it.
class ScenePicture
{
public:
    [[nodiscard]] virtual QList<int>& visibleLayers() = 0;

    // The elements at these places (indexes in the scene's display list), or all elements, look different now: they are
    // invalidated and a repaint is scheduled.
    virtual void repaintPlaces(const std::vector<int>& places) = 0;
    virtual void repaintAll() = 0;

    // Any number of elements have other states: they are selected, highlighted or filtered, or no longer.
    virtual void repaintStates() = 0;

    // These invalidate without scheduling a repaint.
    virtual void invalidateElements(const std::vector<int>& places) = 0;
    virtual void forgetAll() = 0;

protected:
    ~ScenePicture() = default;
};

} // namespace mirn::zelchipview
