// SPDX-License-Identifier: MIT
#include "graphics/painting/paintjob.h"

#include "graphics/elements/enlarged.h"
#include "graphics/painting/shapepainter.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

constexpr int FullOpacity = 256;

// Up to this many texts, QPainter draws them faster than the masks of their glyphs are made.
constexpr int FewTexts = 200;

bool isVisible(QRgb color)
{
    return qAlpha(color) != 0;
}

bool scalesUniformly(const QTransform& transform)
{
    return transform.type() <= QTransform::TxScale && transform.m11() == transform.m22() && transform.m11() > 0;
}

} // namespace

PaintJob::PaintJob(const Sources& sources, const PaintTarget& target, Space& space)
    : m_list(sources.list)
    , m_shaper(sources.shaper)
    , m_masks(sources.masks)
    , m_target(target)
    , m_states(sources.states)
    , m_isShown(sources.isShown)
    , m_haveStates(!m_states.selected->isEmpty() || !m_states.highlighted->isEmpty()
          || (m_states.filtered && !m_states.filtered->isEmpty()))
    , m_isRaster(scalesUniformly(target.sceneToImage) && target.hints.testFlag(QPainter::Antialiasing))
    , m_mapping{target.sceneToImage.m11(), target.sceneToImage.dx(), target.sceneToImage.dy()}
    , m_area(sceneArea(target.sceneToImage, target.part))
    , m_rasteriser(*target.image, target.part, m_mapping)
    , m_inside(QRectF(target.image->rect()))
    , m_textColor(target.textPen.color().rgba())
    , m_mayMask(m_isRaster && qAlpha(m_textColor) == 255 && m_shaper.hasNoDecoration())
    , m_space(space)
    , m_found(space.found)
    , m_device(target.image)
{ }

void PaintJob::find()
{
    m_found.clear();
    m_list.find(m_area, m_target.sceneToImage.inverted().mapRect(QRectF(m_target.part)), m_found, m_space.search);
}

bool PaintJob::isTouched(const ElementGrid::Found& found) const
{
    return m_isShown[m_list.primitive(found.place).layer]
        && (found.isInside || touches(m_list.boundsOf(found.place), m_area));
}

void PaintJob::paint()
{
    m_hasManyTexts = hasManyTexts();
    for (const ElementGrid::Found& found : m_found) {
        if (isTouched(found))
            paint(m_list.primitive(found.place), found.isInside);
    }
}

int PaintJob::drawPixels()
{
    for (; m_next < m_found.size(); ++m_next) {
        const ElementGrid::Found& found = m_found[m_next];
        if (!isTouched(found))
            continue;
        const Primitive& primitive = m_list.primitive(found.place);
        const bool isDrawn
            = primitive.kind == Primitive::Text ? drawReadyText(primitive) : rasterise(primitive, found.isInside);
        if (!isDrawn)
            return found.place;
    }
    return End;
}

void PaintJob::paint(int place)
{
    paint(m_list.primitive(place), false);
}

void PaintJob::shapeTexts()
{
    for (const ElementGrid::Found& found : m_found) {
        const Primitive& primitive = m_list.primitive(found.place);
        if (primitive.kind != Primitive::Text || !isTouched(found))
            continue;
        const QTransform toImage = textTransform(primitive, m_target.sceneToImage);
        if (mayMask(primitive, toImage) && !isTooSmall(primitive, toImage))
            (void)m_shaper.shape(*primitive.label);
    }
}

bool PaintJob::hasManyTexts() const
{
    if (m_list.textCount() <= FewTexts || static_cast<int>(m_found.size()) == m_list.size())
        return m_list.textCount() > FewTexts;
    int texts = 0;
    return std::any_of(m_found.begin(), m_found.end(), [&](const ElementGrid::Found& found) {
        texts += m_list.primitive(found.place).kind == Primitive::Text ? 1 : 0;
        return texts > FewTexts;
    });
}

void PaintJob::paint(const Primitive& primitive, bool isInside)
{
    if (primitive.kind == Primitive::Text)
        paintText(primitive);
    else if (!rasterise(primitive, isInside))
        paintShape(primitive);
}

// `isInside` is true if the primitive lies certainly within the image.
bool PaintJob::rasterise(const Primitive& primitive, bool isInside)
{
    switch (primitive.kind) {
    case Primitive::Rect:
        return rasteriseRect(primitive, isInside);
    case Primitive::Line:
        return rasteriseLine(primitive);
    case Primitive::Polygon:
        return rasterisePolygon(primitive);
    default:
        return false;
    }
}

ElementStates PaintJob::statesOf(int elementId) const
{
    return m_haveStates ? m_states.of(elementId) : ElementStates();
}

// Returns whether a point is near enough to the image for the rasteriser's fixed-point numbers.
bool PaintJob::isNear(double x, double y) const
{
    return Rasteriser::isNear(m_mapping.x(x)) && Rasteriser::isNear(m_mapping.y(y));
}

// Returns whether the rasteriser may draw a rect, with the same result as QPainter.
bool PaintJob::isWithinReach(const QRectF& rect) const
{
    if (!Rasteriser::DrawsCutRects && (m_mapping.x(rect.left()) < 0 || m_mapping.x(rect.right()) > m_inside.width()))
        return false;
    return isNear(rect.left(), rect.top()) && isNear(rect.right(), rect.bottom());
}

// QPainter draws lines that are mere dots by other rules.
bool PaintJob::isPoint(const QLineF& line) const
{
    constexpr double ShortestLine = 0.1; // pixels
    return m_mapping.scale * std::max(std::abs(line.dx()), std::abs(line.dy())) < ShortestLine;
}

// A line of zero length is an item without an area, which Qt paints only if its point lies in the viewport, two pixels
// more or less. QPainter does not clip such lines properly: outside the picture it may draw a bar across all of it.
bool PaintJob::isDotOutside(const QLineF& line) const
{
    constexpr int QtsMargin = 2; // pixels
    const QPointF dot(std::floor(m_mapping.x(line.x1())), std::floor(m_mapping.y(line.y1())));
    return m_isRaster && line.p1() == line.p2() && !enlarged(m_inside, QtsMargin).intersects(QRectF(dot, QSizeF(1, 1)));
}

// Returns the opacity (0 to 256) of a pen that draws thin lines, or nothing for a wide pen. A pen of width 0 is one
// pixel wide at any scale.
std::optional<int> PaintJob::thinOpacity(double penWidth) const
{
    if (penWidth == 0)
        return FullOpacity;
    const double pixels = penWidth * m_mapping.scale;
    if (pixels < WidePenThreshold)
        return static_cast<int>(pixels * FullOpacity);
    return std::nullopt;
}

QPainter& PaintJob::painter()
{
    if (!m_painter.isActive()) {
        m_painter.begin(&m_device);
        m_painter.setRenderHints(m_target.hints);
        m_painter.setTransform(m_target.sceneToImage);
    }
    return m_painter;
}

bool PaintJob::rasteriseRect(const Primitive& primitive, bool isInside)
{
    if (!m_isRaster)
        return false;
    const paintrules::Look look = paintrules::rectLook(
        primitive.fillColor, primitive.strokeColor, primitive.strokeWidth, statesOf(primitive.elementId));
    const QRectF rect = primitive.rect();
    if (rect.width() < 0 || rect.height() < 0 || !(isInside || isWithinReach(rect)))
        return false;
    const std::optional<int> opacity = isVisible(look.border) ? thinOpacity(look.borderWidth) : 0;
    if (!opacity && !m_space.border.make(rect, look.borderWidth, m_mapping))
        return false;
    m_rasteriser.drawRect(rect, look.fill, look.border, opacity.value_or(0));
    if (!opacity)
        m_rasteriser.drawStretchedMask(m_space.border.mask(), look.border);
    return true;
}

bool PaintJob::rasteriseLine(const Primitive& primitive)
{
    const QLineF line(primitive.a, primitive.b, primitive.c, primitive.d);
    const std::optional<int> opacity = thinOpacity(paintrules::lineWidth(primitive.strokeWidth));
    if (m_isRaster && opacity && isNear(line.x1(), line.y1()) && isNear(line.x2(), line.y2()) && !isPoint(line)) {
        m_rasteriser.drawLine(line, 0xff000000U | primitive.strokeColor, *opacity);
        return true;
    }
    return isDotOutside(line);
}

bool PaintJob::rasterisePolygon(const Primitive& primitive)
{
    if (!m_isRaster)
        return false;
    const paintrules::Look look = paintrules::polygonLook(primitive.fillColor, statesOf(primitive.elementId));
    const auto [first, count] = primitive.corners;
    const QPointF* corners = m_list.corner(first);
    const std::optional<int> opacity = isVisible(look.border) ? thinOpacity(look.borderWidth) : 0;
    const auto isCornerNear = [this](const QPointF& corner) { return isNear(corner.x(), corner.y()); };
    if (!opacity || (*opacity > 0 && !std::all_of(corners, corners + count, isCornerNear))
        || !m_space.polygon.make(corners, count, m_mapping))
        return false;
    m_rasteriser.drawMask(m_space.polygon.mask(), look.fill);
    if (*opacity > 0)
        m_rasteriser.strokePolygon(corners, count, look.border, *opacity);
    return true;
}

void PaintJob::paintShape(const Primitive& primitive)
{
    ShapePainter shapes(painter());
    const ElementStates states = statesOf(primitive.elementId);
    if (primitive.kind == Primitive::Line) {
        shapes.drawLine(primitive);
    } else if (primitive.kind == Primitive::Rect) {
        shapes.drawRect(primitive.rect(),
            paintrules::rectLook(primitive.fillColor, primitive.strokeColor, primitive.strokeWidth, states));
    } else {
        const auto [first, count] = primitive.corners;
        shapes.drawPolygon(m_list.corner(first), count, paintrules::polygonLook(primitive.fillColor, states));
    }
}

bool PaintJob::isTooSmall(const Primitive& text, const QTransform& toImage) const
{
    return text.d * toImage.m11() < m_target.smallestText;
}

// Whether a text may be drawn from masks.
bool PaintJob::mayMask(const Primitive& text, const QTransform& toImage) const
{
    return m_mayMask && static_cast<int>(text.c) == 0 && text.d * toImage.m11() <= GlyphMasks::LargestSize
        && isNear(text.a, text.b);
}

bool PaintJob::drawReadyText(const Primitive& primitive)
{
    const QTransform toImage = textTransform(primitive, m_target.sceneToImage);
    return isTooSmall(primitive, toImage)
        || (mayMask(primitive, toImage)
            && m_masks.drawReady(*primitive.label, toImage.dx(), toImage.dy(), m_textColor, m_rasteriser));
}

void PaintJob::paintText(const Primitive& primitive)
{
    const QTransform toImage = textTransform(primitive, m_target.sceneToImage);
    if (isTooSmall(primitive, toImage))
        return;
    const TextLabel& label = *primitive.label;
    if (mayMask(primitive, toImage) && (m_hasManyTexts || m_masks.isReadyFor(label, toImage.dx(), toImage.dy()))
        && m_masks.draw(label, toImage.dx(), toImage.dy(), m_textColor, m_rasteriser))
        return;
    ShapePainter(painter()).drawText(primitive, m_shaper.font(label), m_target.textPen, m_target.sceneToImage);
}

} // namespace mirn::zelchipview
