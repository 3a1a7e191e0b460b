// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/geometry/transform.h"

#include <cstddef>
#include <vector>

namespace mirn::zelsvg {

class Diagnostics;

// An outline of straight segments in scene units. Curves are given in user units, transformed, and divided into chords
// within a tolerance. Shapes owns one and reuses it for all shapes, to keep its memory. It draws nothing.
class FlatPath
{
public:
    struct Subpath
    {
        std::size_t first;
        std::size_t count;
        bool isClosed;
    };

    FlatPath(Diagnostics& diagnostics, std::size_t mostPoints);

    // Starts a new outline. `tolerance` is in scene units, above 0.
    void begin(const Matrix& matrix, double tolerance);

    void moveTo(zel_Point to);
    void lineTo(zel_Point to);
    void quadTo(zel_Point control, zel_Point to);
    void cubicTo(zel_Point control1, zel_Point control2, zel_Point to);
    // Adds an elliptic arc as in path data; `angle` is the direction of the first radius in degrees.
    void arcTo(double radiusX, double radiusY, double angle, bool isLarge, bool isClockwise, zel_Point to);
    void ellipse(zel_Point center, double radiusX, double radiusY);
    void close();

    // The end of the last segment, in user units.
    [[nodiscard]] zel_Point current() const { return m_current; }

    // The outline; a subpath needs at least two points. Call finish() first.
    void finish();
    [[nodiscard]] const std::vector<zel_Point>& points() const { return m_points; }
    [[nodiscard]] const std::vector<Subpath>& subpaths() const { return m_subpaths; }

private:
    void startSubpath();
    void endSubpath(bool isClosed);
    void addPoint(zel_Point mapped);
    void addArc(zel_Point center, double radiusX, double radiusY, double turn, double from, double sweep);
    [[nodiscard]] int chordCount(double deviation) const;

    Diagnostics& m_diagnostics;
    const std::size_t m_mostPoints;
    Matrix m_matrix;
    double m_tolerance = 1.0;
    std::vector<zel_Point> m_points;
    std::vector<Subpath> m_subpaths;
    std::size_t m_first = 0; // index of the open subpath's first point
    bool m_isOpen = false;
    zel_Point m_start;
    zel_Point m_current;
};

// Returns twice the area that a closed outline encloses; its sign is the direction.
[[nodiscard]] double signedArea(const zel_Point* points, std::size_t count);

} // namespace mirn::zelsvg
