// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

namespace mirn::zelchipview {

// Returns the rect with all four sides moved outwards by `by`, or inwards if `by` is negative.
inline QRectF enlarged(const QRectF& rect, double by)
{
    return rect.adjusted(-by, -by, by, by);
}

// Unlike QRectF::intersects(), this includes rectangles without width or height.
inline bool touches(const QRectF& a, const QRectF& b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

} // namespace mirn::zelchipview
