// SPDX-License-Identifier: MIT
#include "platform/svg/shapes/shapes.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/geometry/pathdata.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

// A rect whose corners are rounded by less than this fraction of the shorter side remains a rect, because rects are the
// sites.
constexpr double NegligibleRounding = 0.02;

} // namespace

Shapes::Shapes(RecordWriter& writer, Diagnostics& diagnostics, const Limits& limits)
    : m_writer(writer)
    , m_diagnostics(diagnostics)
    , m_path(diagnostics, limits.points)
{ }

bool Shapes::isShape(ElementName name)
{
    switch (name) {
    case ElementName::Circle:
    case ElementName::Ellipse:
    case ElementName::Line:
    case ElementName::Path:
    case ElementName::Polygon:
    case ElementName::Polyline:
    case ElementName::Rect:
        return true;
    default:
        return false;
    }
}

bool Shapes::readPaint(const ShapeContext& context)
{
    const Style& style = context.style;
    m_hasFill = style.fillColor(m_fill);
    m_stroke = {};
    m_hasStroke = style.strokeWidth > 0.0 && style.strokeColor(m_stroke.color);
    if (m_hasStroke)
        m_stroke.width = style.strokeWidth * (style.hasFixedStroke ? 1.0 : context.matrix.meanScale());
    m_hasStroke = m_stroke.width > 0.0;
    m_style = &style;
    m_matrix = &context.matrix;
    m_isEvenOdd = style.isEvenOdd;
    m_lengths = {style.fontSize, context.viewport};
    return m_hasFill || m_hasStroke;
}

bool Shapes::readGeometry(const Element& element, const ShapeContext& context)
{
    m_isRect = false;
    if (element.name() == ElementName::Rect)
        return readRect(element, context);
    m_path.begin(context.matrix, context.tolerance);
    switch (element.name()) {
    case ElementName::Line:
        return readLine(element, context);
    case ElementName::Circle:
    case ElementName::Ellipse:
        return readEllipse(element, context);
    case ElementName::Polyline:
    case ElementName::Polygon:
        readPoints(element.value(AttributeName::Points), m_path, m_diagnostics);
        if (element.name() == ElementName::Polygon)
            m_path.close();
        break;
    default:
        readPathData(element.value(AttributeName::D), m_path, m_diagnostics);
        break;
    }
    m_path.finish();
    return !m_path.subpaths().empty();
}

bool Shapes::readRect(const Element& element, const ShapeContext& context)
{
    double width = 0.0;
    double height = 0.0;
    sizeIsGiven(element, AttributeName::Width, LengthAxis::Horizontal, width);
    sizeIsGiven(element, AttributeName::Height, LengthAxis::Vertical, height);
    if (!(width > 0.0 && height > 0.0))
        return false;
    const zel_Point corner{length(element, AttributeName::X, LengthAxis::Horizontal),
        length(element, AttributeName::Y, LengthAxis::Vertical)};
    double radiusX = 0.0;
    double radiusY = 0.0;
    if (element.has(AttributeName::Rx) || element.has(AttributeName::Ry)) {
        const bool hasX = sizeIsGiven(element, AttributeName::Rx, LengthAxis::Horizontal, radiusX);
        const bool hasY = sizeIsGiven(element, AttributeName::Ry, LengthAxis::Vertical, radiusY);
        radiusX = std::min(hasX ? radiusX : radiusY, width / 2);
        radiusY = std::min(hasY ? radiusY : radiusX, height / 2);
    }
    const bool isRounded = std::min(radiusX, radiusY) > NegligibleRounding * std::min(width, height);
    m_isRect = !isRounded && context.matrix.keepsAxes();
    if (!m_isRect) {
        m_path.begin(context.matrix, context.tolerance);
        roundedRect(corner, width, height, isRounded ? radiusX : 0.0, isRounded ? radiusY : 0.0);
        return true;
    }
    const zel_Point a = context.matrix.map(corner.x, corner.y);
    const zel_Point b = context.matrix.map(corner.x + width, corner.y + height);
    m_corner = {std::min(a.x, b.x), std::min(a.y, b.y)};
    m_width = std::fabs(b.x - a.x);
    m_height = std::fabs(b.y - a.y);
    return m_width > 0.0 && m_height > 0.0;
}

// The outline runs clockwise from the left end of the upper side.
void Shapes::roundedRect(zel_Point corner, double width, double height, double radiusX, double radiusY)
{
    const double left = corner.x;
    const double top = corner.y;
    const double right = left + width;
    const double bottom = top + height;
    const auto arc = [&](double x, double y) { m_path.arcTo(radiusX, radiusY, 0.0, false, true, {x, y}); };
    const bool isRounded = radiusX > 0.0 && radiusY > 0.0;
    m_path.moveTo({left + radiusX, top});
    m_path.lineTo({right - radiusX, top});
    if (isRounded)
        arc(right, top + radiusY);
    m_path.lineTo({right, bottom - radiusY});
    if (isRounded)
        arc(right - radiusX, bottom);
    m_path.lineTo({left + radiusX, bottom});
    if (isRounded)
        arc(left, bottom - radiusY);
    m_path.lineTo({left, top + radiusY});
    if (isRounded)
        arc(left + radiusX, top);
    m_path.close();
}

bool Shapes::readLine(const Element& element, const ShapeContext&)
{
    const zel_Point from{length(element, AttributeName::X1, LengthAxis::Horizontal),
        length(element, AttributeName::Y1, LengthAxis::Vertical)};
    const zel_Point to{length(element, AttributeName::X2, LengthAxis::Horizontal),
        length(element, AttributeName::Y2, LengthAxis::Vertical)};
    m_path.moveTo(from);
    m_path.lineTo(to);
    m_path.finish();
    return m_hasStroke;
}

bool Shapes::readEllipse(const Element& element, const ShapeContext&)
{
    double radiusX = 0.0;
    double radiusY = 0.0;
    if (element.name() == ElementName::Circle) {
        sizeIsGiven(element, AttributeName::R, LengthAxis::Diagonal, radiusX);
        radiusY = radiusX;
    } else {
        const bool hasX = sizeIsGiven(element, AttributeName::Rx, LengthAxis::Horizontal, radiusX);
        const bool hasY = sizeIsGiven(element, AttributeName::Ry, LengthAxis::Vertical, radiusY);
        radiusX = hasX ? radiusX : radiusY;
        radiusY = hasY ? radiusY : radiusX;
    }
    if (!(radiusX > 0.0 && radiusY > 0.0))
        return false;
    m_path.ellipse({length(element, AttributeName::Cx, LengthAxis::Horizontal),
                       length(element, AttributeName::Cy, LengthAxis::Vertical)},
        radiusX, radiusY);
    return true;
}

double Shapes::length(const Element& element, AttributeName name, LengthAxis axis) const
{
    double value = 0.0;
    if (element.has(name))
        parseLength(element.value(name), m_lengths, axis, m_diagnostics, value);
    return value;
}

bool Shapes::sizeIsGiven(const Element& element, AttributeName name, LengthAxis axis, double& value) const
{
    return element.has(name) && parseSize(element.value(name), m_lengths, axis, m_diagnostics, value);
}

void Shapes::write(const Identity& identity)
{
    if (m_isRect) {
        writeRect(identity);
        return;
    }
    if (m_hasFill)
        writeFill(identity);
    if (m_hasStroke)
        writeStroke(identity);
}

// A rect record draws its own border; a rect without a fill becomes four lines.
void Shapes::writeRect(const Identity& identity)
{
    if (m_hasFill) {
        m_writer.addRect(identity, m_corner, m_width, m_height, m_fill, m_stroke);
        return;
    }
    const zel_Point corners[] = {m_corner, {m_corner.x + m_width, m_corner.y},
        {m_corner.x + m_width, m_corner.y + m_height}, {m_corner.x, m_corner.y + m_height}};
    const bool isEven = isStrokeEven();
    for (int i = 0; i < 4; ++i)
        writeLine(identity, corners[i], corners[(i + 1) % 4], isEven);
}

// A polygon record is a single outline filled by the even-odd rule. Several subpaths are therefore joined into one by
// bridges of zero width, which keeps holes open. With the nonzero rule and all subpaths in the same direction there are
// no holes, but the subpaths may overlap, so each becomes a polygon of its own.
void Shapes::writeFill(const Identity& identity)
{
    const auto& points = m_path.points();
    if (m_path.subpaths().size() > 1 && (m_isEvenOdd || !areAllAlike())) {
        const std::vector<zel_Point> outline = bridged();
        if (outline.size() > 2)
            m_writer.addPolygon(identity, outline.data(), outline.size(), m_fill, m_stroke);
        return;
    }
    for (const FlatPath::Subpath& subpath : m_path.subpaths()) {
        if (subpath.count > 2)
            m_writer.addPolygon(identity, points.data() + subpath.first, subpath.count, m_fill, m_stroke);
    }
}

bool Shapes::areAllAlike() const
{
    bool hasLeft = false;
    bool hasRight = false;
    for (const FlatPath::Subpath& subpath : m_path.subpaths()) {
        const double area = signedArea(m_path.points().data() + subpath.first, subpath.count);
        hasLeft = hasLeft || area < 0.0;
        hasRight = hasRight || area > 0.0;
    }
    return !(hasLeft && hasRight);
}

// The outline goes from the start of the first subpath to each other subpath, around it and back.
std::vector<zel_Point> Shapes::bridged() const
{
    const auto& points = m_path.points();
    std::vector<zel_Point> outline;
    outline.reserve(points.size() + 3 * m_path.subpaths().size());
    for (const FlatPath::Subpath& subpath : m_path.subpaths()) {
        if (subpath.count < 3)
            continue;
        const auto first = points.begin() + static_cast<std::ptrdiff_t>(subpath.first);
        const bool isBase = outline.empty();
        outline.insert(outline.end(), first, first + static_cast<std::ptrdiff_t>(subpath.count));
        outline.push_back(*first);
        if (!isBase)
            outline.push_back(zel_Point(outline.front()));
    }
    return outline;
}

void Shapes::writeStroke(const Identity& identity)
{
    const auto& points = m_path.points();
    const bool isEven = isStrokeEven();
    for (const FlatPath::Subpath& subpath : m_path.subpaths()) {
        const zel_Point* first = points.data() + subpath.first;
        for (std::size_t i = 0; i + 1 < subpath.count + (subpath.isClosed && subpath.count > 2); ++i) {
            const zel_Point& from = first[i];
            const zel_Point& to = first[i + 1 < subpath.count ? i + 1 : 0];
            if (from.x != to.x || from.y != to.y)
                writeLine(identity, from, to, isEven);
        }
        if (m_diagnostics.hasFailed())
            return;
    }
}

bool Shapes::isStrokeEven() const
{
    return m_style->hasFixedStroke || m_matrix->isEven();
}

// If the axes are scaled differently, the width depends on the line's direction. Widths of oblique lines are rounded to
// steps, so that the chords of a curve share few looks.
void Shapes::writeLine(const Identity& identity, zel_Point from, zel_Point to, bool isEven)
{
    Stroke stroke = m_stroke;
    if (!isEven) {
        constexpr double Steps = 32; // per mean width
        const double x = to.x - from.x;
        const double y = to.y - from.y;
        stroke.width = m_style->strokeWidth * m_matrix->scaleAcross(x, y);
        if (x != 0.0 && y != 0.0)
            stroke.width = std::max(std::round(stroke.width / m_stroke.width * Steps), 1.0) / Steps * m_stroke.width;
    }
    m_writer.addLine(identity, from, to, stroke);
}

} // namespace mirn::zelsvg
