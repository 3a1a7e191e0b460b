// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/raster/coveragegrid.h"
#include "graphics/painting/raster/coveragemask.h"
#include "graphics/painting/raster/rasteriser.h"

#include <QPointF>

#include <vector>

namespace mirn::zelchipview {

// Computes the coverage masks of polygons of moderate size. The result equals, pixel for pixel, what QPainter draws
// with antialiasing and the odd-even rule.
class PolygonCoverage final
{
public:
    // Takes a polygon in scene coordinates, its last corner joined with the first. Returns false for one that must be
    // left to QPainter: it is too large or too far away, has thousands of corners or coordinates that are not finite,
    // or may be a rect, which has other rules.
    [[nodiscard]] bool make(const QPointF* corners, int count, const Rasteriser::Mapping& mapping);

    // Returns the mask of the polygon that make() took last. It is valid until the next call of make().
    [[nodiscard]] CoverageMask mask() const { return m_mask; }

private:
    CoverageGrid m_grid;
    std::vector<CoverageGrid::Corner> m_corners;
    CoverageMask m_mask{};
};

} // namespace mirn::zelchipview
