// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelgraphicrecords.h"
#include "platform/svg/geometry/transform.h"

#include <cstddef>
#include <vector>

namespace zelsvg {

class Diagnostics;

// An outline of straight pieces in scene units. Curves come in user units, are mapped and cut into chords that stay
// within a tolerance of them. Kept between shapes for its memory.
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

    // Starts over. `tolerance` is in scene units, > 0.
    void begin(const Matrix& matrix, double tolerance);

    void moveTo(zel_Point to);
    void lineTo(zel_Point to);
    void quadTo(zel_Point control, zel_Point to);
    void cubicTo(zel_Point control1, zel_Point control2, zel_Point to);
    // An elliptic arc as in a path; `angle` is the direction of the first radius in degrees.
    void arcTo(double radiusX, double radiusY, double angle, bool isLarge, bool isClockwise, zel_Point to);
    void ellipse(zel_Point center, double radiusX, double radiusY);
    void close();

    // The end of the last piece, in user units.
    [[nodiscard]] zel_Point current() const { return m_current; }

    // What has been drawn; a subpath of a single point is none. Call finish() first.
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
    std::size_t m_first = 0; // of the open subpath
    bool m_isOpen = false;
    zel_Point m_start;
    zel_Point m_current;
};

// Twice the area that a closed outline encloses; its sign is the direction.
[[nodiscard]] double signedArea(const zel_Point* points, std::size_t count);

} // namespace zelsvg
