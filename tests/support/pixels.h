// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QImage>

namespace zeltest {

// How many pixels of each colour are in a part of a picture.
inline QHash<QRgb, int> colorsIn(const QImage& picture, const QRect& area)
{
    QHash<QRgb, int> counts;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x)
            ++counts[picture.pixel(x, y)];
    }
    return counts;
}

} // namespace zeltest
