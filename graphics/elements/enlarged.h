// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

namespace mirn::zelchipview {

// Returns the rect with all four sides moved outwards by `by`, or inwards if `by` is negative.
inline QRectF enlarged(const QRectF& rect, double by)
{
    return rect.adjusted(-by, -by, by, by);
}

} // namespace mirn::zelchipview
