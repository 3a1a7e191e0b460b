// SPDX-License-Identifier: MIT
#include "graphics/painting/raster/rectborder.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

// In pixels. QPainter draws narrower pens by other rules.
constexpr double LargestThinPen = 1.001;

constexpr int UnitsPerPixel = CoverageGrid::Unit;

// The border's sides and the rect's along one axis, in ascending order if the pen is narrower than the rect.
enum Side { OuterFirst, First, InnerFirst, InnerLast, Last, OuterLast, SideCount };

struct Crossing // of two sides, one of each axis
{
    Side x;
    Side y;
};

// The outer outline has bevelled corners.
constexpr Crossing Outer[] = {{First, OuterFirst}, {Last, OuterFirst}, {OuterLast, First}, {OuterLast, Last},
    {Last, OuterLast}, {First, OuterLast}, {OuterFirst, Last}, {OuterFirst, First}};

// QPainter does not cut off the inner sides where they meet; they go on to the rect's sides and return by its corners.
constexpr Crossing Inner[]
    = {{InnerFirst, First}, {InnerFirst, Last}, {First, Last}, {First, InnerLast}, {Last, InnerLast}, {Last, Last},
        {InnerLast, Last}, {InnerLast, First}, {Last, First}, {Last, InnerFirst}, {First, InnerFirst}, {First, First}};

int pixelOf(int place)
{
    return static_cast<int>(std::floor(double(place) / UnitsPerPixel));
}

// QPainter moves a side by adding a difference of coordinates, which may have been rounded.
double moved(double side, double distance)
{
    return side + ((side + distance) - side);
}

// The sides' places on the grid.
struct Places
{
    Places(double first, double last, double reach, double scale, double offset)
    {
        const double sides[SideCount]
            = {moved(first, -reach), first, moved(first, reach), moved(last, -reach), last, moved(last, reach)};
        for (int side = 0; side < SideCount; ++side)
            at[side] = CoverageGrid::onGrid(scale * sides[side] + offset);
    }

    // Takes out pixels between the inner sides, where the border looks everywhere the same, but for `kept` ones.
    // Returns how many; the kept ones begin at a multiple of `kept`, counted from the first pixel.
    int shorten(int kept)
    {
        const int before = (pixelOf(at[InnerFirst]) - pixelOf(at[OuterFirst])) / kept * kept + kept;
        const int taken = pixelOf(at[InnerLast]) - pixelOf(at[OuterFirst]) - before - kept;
        if (taken <= 0)
            return 0;
        begin = before;
        for (int side = InnerLast; side < SideCount; ++side)
            at[side] -= taken * UnitsPerPixel;
        return taken;
    }

    int at[SideCount];
    int begin = 0; // of the kept pixels
};

bool isSuitable(const QRectF& rect, double penPixels, const Rasteriser::Mapping& mapping)
{
    return RectBorder::IsExact && penPixels > LargestThinPen && penPixels < CoverageGrid::LargestExtent
        && rect.width() > 0 && rect.height() > 0 && Rasteriser::isNear(mapping.x(rect.left()))
        && Rasteriser::isNear(mapping.y(rect.top())) && Rasteriser::isNear(mapping.x(rect.right()))
        && Rasteriser::isNear(mapping.y(rect.bottom()));
}

} // namespace

bool RectBorder::make(const QRectF& rect, double penWidth, const Rasteriser::Mapping& mapping)
{
    if (!isSuitable(rect, penWidth * mapping.scale, mapping))
        return false;
    const double reach = penWidth / 2;
    Places x(rect.left(), rect.right(), reach, mapping.scale, mapping.dx);
    Places y(rect.top(), rect.bottom(), reach, mapping.scale, mapping.dy);
    m_mask.moreColumns = x.shorten(CoverageMask::ColumnsAtOnce);
    m_mask.moreRows = y.shorten(1);
    m_mask.column = x.begin;
    m_mask.row = y.begin;
    if (!m_grid.begin({x.at[OuterFirst], y.at[OuterFirst]}, {x.at[OuterLast], y.at[OuterLast]}))
        return false;
    const auto addOutline = [&](const auto& outline) {
        Crossing before = *(std::end(outline) - 1);
        for (const Crossing& corner : outline) {
            m_grid.addEdge({x.at[before.x], y.at[before.y]}, {x.at[corner.x], y.at[corner.y]});
            before = corner;
        }
    };
    addOutline(Outer);
    addOutline(Inner);
    m_mask.mask = m_grid.finish(CoverageGrid::Rule::Winding);
    return true;
}

} // namespace mirn::zelchipview
