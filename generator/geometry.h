// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zeldevicegenerator {

// An upright rectangle in drawing units, y downwards.
struct Box
{
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;

    [[nodiscard]] double right() const { return x + width; }
    [[nodiscard]] double bottom() const { return y + height; }
    [[nodiscard]] double centerX() const { return x + width / 2; }
    [[nodiscard]] double centerY() const { return y + height / 2; }

    // Returns a box given relative to the upper left corner of this one.
    [[nodiscard]] Box inner(double dx, double dy, double w, double h) const { return {x + dx, y + dy, w, h}; }
};

struct Point
{
    double x = 0.0;
    double y = 0.0;
};

// The edge of the die on which a pad ring cell sits.
enum class Side { Top, Right, Bottom, Left };

// A cell of the pad ring in its own coordinates: `along` runs along the edge (rightwards or downwards), `depth` from
// the outside inwards. One description of a cell thus serves all four sides.
struct EdgeCell
{
    Side side = Side::Top;
    Box box;

    [[nodiscard]] Box part(double along, double depth, double length, double thickness) const
    {
        switch (side) {
        case Side::Top:
            return {box.x + along, box.y + depth, length, thickness};
        case Side::Bottom:
            return {box.x + along, box.bottom() - depth - thickness, length, thickness};
        case Side::Left:
            return {box.x + depth, box.y + along, thickness, length};
        case Side::Right:
            break;
        }
        return {box.right() - depth - thickness, box.y + along, thickness, length};
    }

    [[nodiscard]] Point point(double along, double depth) const
    {
        const Box corner = part(along, depth, 0, 0);
        return {corner.x, corner.y};
    }
};

} // namespace mirn::zeldevicegenerator
