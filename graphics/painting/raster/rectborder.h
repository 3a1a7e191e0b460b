// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/coveragegrid.h"
#include "graphics/painting/raster/coveragemask.h"
#include "graphics/painting/raster/rasteriser.h"

#include <QRectF>

namespace mirn::zelchipview {

// Computes the coverage mask of a border of a pixel or more around a rect. The result equals, pixel for pixel, what
// QPainter draws with antialiasing, a solid pen and bevelled corners.
class RectBorder final
{
public:
    // Qt 5 puts the outlines of wide pens elsewhere.
    static constexpr bool IsExact = QT_VERSION >= QT_VERSION_CHECK(6, 0, 0);

    // Takes a rect and the pen's width, both in scene coordinates. Returns false for a border that must be left to
    // QPainter: its pen is a pixel wide or less, or very wide, the rect has no area or is too far away.
    [[nodiscard]] bool make(const QRectF& rect, double penWidth, const Rasteriser::Mapping& mapping);

    // Returns the mask of the border that make() took last. It is valid until the next call of make().
    [[nodiscard]] const StretchedMask& mask() const { return m_mask; }

private:
    CoverageGrid m_grid;
    StretchedMask m_mask{};
};

} // namespace mirn::zelchipview
