// SPDX-License-Identifier: MIT
#include "graphics/elements/layervisibility.h"

namespace mirn::zelchipview {

QList<int> visibleLayersAt(const std::map<int, RangeScale>& ranges, double scale)
{
    QList<int> layers;
    for (const auto& [layer, range] : ranges) {
        if (!(scale < range.minimum) && !(scale > range.maximum))
            layers.append(layer);
    }
    return layers;
}

} // namespace mirn::zelchipview
