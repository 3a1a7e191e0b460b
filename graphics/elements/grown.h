// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

namespace mirn::zelchipview {

// Moves all four sides outwards, or inwards by less than 0.
inline QRectF grown(const QRectF& rect, double by)
{
    return rect.adjusted(-by, -by, by, by);
}

} // namespace mirn::zelchipview
