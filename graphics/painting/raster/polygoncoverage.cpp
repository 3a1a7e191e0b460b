// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/polygoncoverage.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

constexpr int FewestCorners = 3;
constexpr int MostCornersOfRects = 5;

// QPainter applies the rules for rects to polygons that are rects.
bool mayBeRect(const QPointF* corners, int count)
{
    if (count > MostCornersOfRects)
        return false;
    for (int i = 0; i + 1 < count; ++i) {
        if (corners[i].x() != corners[i + 1].x() && corners[i].y() != corners[i + 1].y())
            return false;
    }
    return true;
}

} // namespace

bool PolygonCoverage::make(const QPointF* corners, int count, const Rasteriser::Mapping& mapping)
{
    if (count < FewestCorners || count > CoverageGrid::MostEdges || mayBeRect(corners, count))
        return false;
    m_corners.clear();
    constexpr int Far = 1 << 30;
    CoverageGrid::Corner least{Far, Far};
    CoverageGrid::Corner most{-Far, -Far};
    for (int i = 0; i < count; ++i) {
        const double x = mapping.x(corners[i].x());
        const double y = mapping.y(corners[i].y());
        if (!Rasteriser::isNear(x) || !Rasteriser::isNear(y))
            return false;
        const CoverageGrid::Corner corner{CoverageGrid::onGrid(x), CoverageGrid::onGrid(y)};
        least = {std::min(least.x, corner.x), std::min(least.y, corner.y)};
        most = {std::max(most.x, corner.x), std::max(most.y, corner.y)};
        m_corners.push_back(corner);
    }
    if (!m_grid.begin(least, most))
        return false;
    for (int i = 0; i + 1 < count; ++i)
        m_grid.addEdge(m_corners[i], m_corners[i + 1]);
    m_grid.addEdge(m_corners.back(), m_corners.front());
    m_mask = m_grid.finish(CoverageGrid::Rule::OddEven);
    return true;
}

} // namespace mirn::zelchipview
