// SPDX-License-Identifier: MIT
#include "platform/svg/geometry/flatpath.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

constexpr int MostChords = 256; // per curve
constexpr int LeastChordsOfCircle = 8;

[[nodiscard]] double distance(zel_Point a, zel_Point b)
{
    return std::hypot(a.x - b.x, a.y - b.y);
}

// Returns twice the distance of b from the midpoint of a and c.
[[nodiscard]] double bend(zel_Point a, zel_Point b, zel_Point c)
{
    return std::hypot(a.x - 2 * b.x + c.x, a.y - 2 * b.y + c.y);
}

[[nodiscard]] double angleBetween(double ux, double uy, double vx, double vy)
{
    return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
}

} // namespace

FlatPath::FlatPath(Diagnostics& diagnostics, std::size_t mostPoints)
    : m_diagnostics(diagnostics)
    , m_mostPoints(mostPoints)
{ }

void FlatPath::begin(const Matrix& matrix, double tolerance)
{
    m_matrix = matrix;
    m_tolerance = tolerance;
    m_points.clear();
    m_subpaths.clear();
    m_isOpen = false;
    m_start = m_current = {};
}

void FlatPath::moveTo(zel_Point to)
{
    endSubpath(false);
    m_start = m_current = to;
}

void FlatPath::lineTo(zel_Point to)
{
    startSubpath();
    addPoint(m_matrix.map(to.x, to.y));
    m_current = to;
}

void FlatPath::quadTo(zel_Point control, zel_Point to)
{
    const auto between = [&](zel_Point end) {
        return zel_Point{end.x + (control.x - end.x) * 2 / 3, end.y + (control.y - end.y) * 2 / 3};
    };
    cubicTo(between(m_current), between(to), to);
}

void FlatPath::cubicTo(zel_Point control1, zel_Point control2, zel_Point to)
{
    startSubpath();
    const zel_Point p0 = m_matrix.map(m_current.x, m_current.y);
    const zel_Point p1 = m_matrix.map(control1.x, control1.y);
    const zel_Point p2 = m_matrix.map(control2.x, control2.y);
    const zel_Point p3 = m_matrix.map(to.x, to.y);
    // The error of a chord is at most an eighth of the second derivative, which is at most 6 times the larger bend.
    const int count = chordCount(0.75 * std::max(bend(p0, p1, p2), bend(p1, p2, p3)));
    for (int i = 1; i < count; ++i) {
        const double t = static_cast<double>(i) / count;
        const double s = 1.0 - t;
        const double w0 = s * s * s;
        const double w1 = 3 * s * s * t;
        const double w2 = 3 * s * t * t;
        const double w3 = t * t * t;
        addPoint({w0 * p0.x + w1 * p1.x + w2 * p2.x + w3 * p3.x, w0 * p0.y + w1 * p1.y + w2 * p2.y + w3 * p3.y});
    }
    addPoint(p3);
    m_current = to;
}

// Converts the endpoint form of an arc to its centre and angles.
void FlatPath::arcTo(double radiusX, double radiusY, double angle, bool isLarge, bool isClockwise, zel_Point to)
{
    double rx = std::fabs(radiusX);
    double ry = std::fabs(radiusY);
    if (rx == 0.0 || ry == 0.0 || distance(m_current, to) == 0.0) {
        lineTo(to);
        return;
    }
    startSubpath();
    const double turn = angle * M_PI / 180.0;
    const double cosine = std::cos(turn);
    const double sine = std::sin(turn);
    const double halfX = (m_current.x - to.x) / 2;
    const double halfY = (m_current.y - to.y) / 2;
    const double x = cosine * halfX + sine * halfY;
    const double y = -sine * halfX + cosine * halfY;
    // Radii that are too small are enlarged until the arc reaches its end.
    const double reach = std::sqrt((x / rx) * (x / rx) + (y / ry) * (y / ry));
    rx *= std::max(reach, 1.0);
    ry *= std::max(reach, 1.0);
    const double length = (x / rx) * (x / rx) + (y / ry) * (y / ry);
    const double factor = std::sqrt(std::max(0.0, 1.0 / length - 1.0)) * (isLarge == isClockwise ? -1 : 1);
    const double centerX = factor * rx * y / ry;
    const double centerY = -factor * ry * x / rx;
    const zel_Point center{cosine * centerX - sine * centerY + (m_current.x + to.x) / 2,
        sine * centerX + cosine * centerY + (m_current.y + to.y) / 2};
    const double startX = (x - centerX) / rx;
    const double startY = (y - centerY) / ry;
    const double from = std::atan2(startY, startX);
    double sweep = angleBetween(startX, startY, (-x - centerX) / rx, (-y - centerY) / ry);
    if (isClockwise && sweep < 0)
        sweep += 2 * M_PI;
    else if (!isClockwise && sweep > 0)
        sweep -= 2 * M_PI;
    addArc(center, rx, ry, turn, from, sweep);
    addPoint(m_matrix.map(to.x, to.y));
    m_current = to;
}

void FlatPath::ellipse(zel_Point center, double radiusX, double radiusY)
{
    moveTo({center.x + radiusX, center.y});
    startSubpath();
    addArc(center, radiusX, radiusY, 0.0, 0.0, 2 * M_PI);
    close();
}

void FlatPath::close()
{
    endSubpath(true);
    m_current = m_start;
}

void FlatPath::finish()
{
    endSubpath(false);
}

void FlatPath::startSubpath()
{
    if (m_isOpen)
        return;
    m_isOpen = true;
    m_first = m_points.size();
    addPoint(m_matrix.map(m_current.x, m_current.y));
}

void FlatPath::endSubpath(bool isClosed)
{
    if (!m_isOpen)
        return;
    m_isOpen = false;
    const zel_Point& first = m_points[m_first];
    // A closed outline does not repeat its first point; one that returns to it counts as closed.
    while (m_points.size() - m_first > 2 && m_points.back().x == first.x && m_points.back().y == first.y) {
        m_points.pop_back();
        isClosed = true;
    }
    m_subpaths.push_back({m_first, m_points.size() - m_first, isClosed});
}

void FlatPath::addPoint(zel_Point mapped)
{
    if (!(std::fabs(mapped.x) <= LargestNumber && std::fabs(mapped.y) <= LargestNumber)) {
        m_diagnostics.fail("found an outline that reaches beyond 1e9, expected one within the drawing");
        mapped = {};
    }
    if (m_points.size() < m_mostPoints)
        m_points.push_back(mapped);
    else
        m_diagnostics.fail("found an outline of more than " + std::to_string(m_mostPoints) + " points");
}

// Adds the points strictly between the two ends.
void FlatPath::addArc(zel_Point center, double radiusX, double radiusY, double turn, double from, double sweep)
{
    const double radius = std::max(radiusX, radiusY) * m_matrix.largestScale();
    const double step = radius > m_tolerance ? 2 * std::acos(1.0 - m_tolerance / radius) : M_PI;
    const double wanted
        = std::max(std::ceil(std::fabs(sweep) / step), LeastChordsOfCircle * std::fabs(sweep) / (2 * M_PI));
    const int count = static_cast<int>(std::clamp(wanted, 1.0, static_cast<double>(MostChords)));
    const double cosine = std::cos(turn);
    const double sine = std::sin(turn);
    for (int i = 1; i < count; ++i) {
        const double angle = from + sweep * i / count;
        const double x = radiusX * std::cos(angle);
        const double y = radiusY * std::sin(angle);
        addPoint(m_matrix.map(center.x + cosine * x - sine * y, center.y + sine * x + cosine * y));
    }
}

int FlatPath::chordCount(double deviation) const
{
    const double wanted = std::ceil(std::sqrt(deviation / m_tolerance));
    // NaN results in one chord as well; addPoint() reports it.
    return wanted > 1.0 ? static_cast<int>(std::min(wanted, static_cast<double>(MostChords))) : 1;
}

double signedArea(const zel_Point* points, std::size_t count)
{
    double area = 0.0;
    for (std::size_t i = 0; i < count; ++i) {
        const zel_Point& a = points[i];
        const zel_Point& b = points[i + 1 < count ? i + 1 : 0];
        area += a.x * b.y - b.x * a.y;
    }
    return area;
}

} // namespace mirn::zelsvg
