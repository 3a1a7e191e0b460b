// SPDX-License-Identifier: MIT
#include "graphics/painting/listpainter.h"

#include "graphics/elements/elementidset.h"
#include "graphics/elements/enlarged.h"
#include "graphics/painting/raster/picturedevice.h"
#include "graphics/painting/raster/polygoncoverage.h"
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

// Returns the area of the scene that a part of the image shows, with the margin.
QRectF sceneArea(const QTransform& sceneToImage, const QRect& part)
{
    return sceneToImage.inverted().mapRect(enlarged(part, PenMargin));
}

bool scalesUniformly(const QTransform& transform)
{
    return transform.type() <= QTransform::TxScale && transform.m11() == transform.m22() && transform.m11() > 0;
}

} // namespace

// One call of paint(). It holds what is the same for all primitives.
class ListPainter::Job
{
public:
    Job(DisplayList& list, TextShaper& shaper, GlyphMasks& masks, const Target& target, const States& states)
        : m_list(list)
        , m_shaper(shaper)
        , m_masks(masks)
        , m_target(target)
        , m_states(states)
        , m_haveStates(!states.selected->isEmpty() || !states.highlighted->isEmpty()
              || (states.filtered && !states.filtered->isEmpty()))
        , m_isRaster(scalesUniformly(target.sceneToImage) && target.hints.testFlag(QPainter::Antialiasing))
        , m_mapping{target.sceneToImage.m11(), target.sceneToImage.dx(), target.sceneToImage.dy()}
        , m_rasteriser(*target.image, target.part, m_mapping)
        , m_inside(QRectF(target.image->rect()))
        , m_mayMask(m_isRaster && target.textPen.color().alpha() == 255)
        , m_device(target.image)
    {
        if (m_shaper.setViewFont(target.viewFont))
            m_masks.clear();
        m_masks.setScale(m_mapping.scale * paintrules::TextItemScale);
    }

    void paint(const QList<int>& layers);

private:
    void draw(const Primitive& primitive, bool isInside);
    void drawRect(const Primitive& rect, bool isInside);
    void drawLine(const Primitive& line);
    void drawPolygon(const Primitive& polygon);
    void drawText(const Primitive& text);

    [[nodiscard]] bool hasManyTexts(const std::vector<ElementGrid::Found>& found) const;
    [[nodiscard]] ElementStates statesOf(int elementId) const;
    [[nodiscard]] bool isNear(double x, double y) const;
    [[nodiscard]] bool isInside(double x, double y) const;
    [[nodiscard]] bool isWithinReach(const QRectF& rect) const;
    [[nodiscard]] bool isPoint(const QLineF& line) const;
    [[nodiscard]] bool isDotOutside(const QLineF& line) const;
    [[nodiscard]] std::optional<int> thinOpacity(double penWidth) const;
    QPainter& painter();

    DisplayList& m_list;
    TextShaper& m_shaper;
    GlyphMasks& m_masks;
    const Target& m_target;
    const States& m_states;
    const bool m_haveStates; // some element has a state, visible or not
    const bool m_isRaster;
    const Rasteriser::Mapping m_mapping;
    Rasteriser m_rasteriser;
    const QRectF m_inside;
    const bool m_mayMask; // texts may be drawn from masks
    bool m_hasManyTexts = false;
    PolygonCoverage m_polygon;
    PictureDevice m_device;
    QPainter m_painter;
};

void ListPainter::Job::paint(const QList<int>& layers)
{
    std::vector<char> isShown;
    for (int layer : m_list.layers())
        isShown.push_back(layers.contains(layer));
    const QRectF area = sceneArea(m_target.sceneToImage, m_target.part);
    const QRectF inner = m_target.sceneToImage.inverted().mapRect(QRectF(m_target.part));
    const std::vector<ElementGrid::Found>& all = m_list.foundIn(area, inner);
    m_hasManyTexts = hasManyTexts(all);
    for (const auto& [place, isInside] : all) {
        const Primitive& primitive = m_list.primitive(place);
        if (isShown[primitive.layer] && (isInside || touches(m_list.boundsOf(place), area)))
            draw(primitive, isInside);
    }
}

bool ListPainter::Job::hasManyTexts(const std::vector<ElementGrid::Found>& found) const
{
    if (m_list.textCount() <= FewTexts || static_cast<int>(found.size()) == m_list.size())
        return m_list.textCount() > FewTexts;
    const auto isText = [this](const auto& each) { return m_list.primitive(each.place).kind == Primitive::Text; };
    return std::count_if(found.begin(), found.end(), isText) > FewTexts;
}

void ListPainter::Job::draw(const Primitive& primitive, bool isInside)
{
    switch (primitive.kind) {
    case Primitive::Rect:
        drawRect(primitive, isInside);
        break;
    case Primitive::Line:
        drawLine(primitive);
        break;
    case Primitive::Polygon:
        drawPolygon(primitive);
        break;
    case Primitive::Text:
        drawText(primitive);
        break;
    }
}

ElementStates ListPainter::Job::statesOf(int elementId) const
{
    return m_haveStates ? m_states.of(elementId) : ElementStates();
}

// Returns whether a point is near enough to the image for the rasteriser's fixed-point numbers.
bool ListPainter::Job::isNear(double x, double y) const
{
    return std::abs(m_mapping.x(x)) < Rasteriser::Farthest && std::abs(m_mapping.y(y)) < Rasteriser::Farthest;
}

bool ListPainter::Job::isInside(double x, double y) const
{
    return enlarged(m_inside, -1).contains(m_mapping.x(x), m_mapping.y(y));
}

// Returns whether the rasteriser may draw a rect, with the same result as QPainter.
bool ListPainter::Job::isWithinReach(const QRectF& rect) const
{
    if (!Rasteriser::DrawsCutRects && (m_mapping.x(rect.left()) < 0 || m_mapping.x(rect.right()) > m_inside.width()))
        return false;
    return isNear(rect.left(), rect.top()) && isNear(rect.right(), rect.bottom());
}

// QPainter draws lines that are mere dots by other rules.
bool ListPainter::Job::isPoint(const QLineF& line) const
{
    constexpr double ShortestLine = 0.1; // pixels
    return m_mapping.scale * std::max(std::abs(line.dx()), std::abs(line.dy())) < ShortestLine;
}

// A line of zero length is an item without an area, which Qt paints only if its point lies in the viewport, two pixels
// more or less. QPainter does not clip such lines properly: outside the picture it may draw a bar across all of it.
bool ListPainter::Job::isDotOutside(const QLineF& line) const
{
    constexpr int QtsMargin = 2; // pixels
    const QPointF dot(std::floor(m_mapping.x(line.x1())), std::floor(m_mapping.y(line.y1())));
    return m_isRaster && line.p1() == line.p2() && !enlarged(m_inside, QtsMargin).intersects(QRectF(dot, QSizeF(1, 1)));
}

// Returns the opacity (0 to 256) of a pen that draws thin lines, or nothing for a wide pen. A pen of width 0 is one
// pixel wide at any scale.
std::optional<int> ListPainter::Job::thinOpacity(double penWidth) const
{
    if (penWidth == 0)
        return FullOpacity;
    const double pixels = penWidth * m_mapping.scale;
    if (pixels < WidePenThreshold)
        return static_cast<int>(pixels * FullOpacity);
    return std::nullopt;
}

QPainter& ListPainter::Job::painter()
{
    if (!m_painter.isActive()) {
        m_painter.begin(&m_device);
        m_painter.setRenderHints(m_target.hints);
        m_painter.setTransform(m_target.sceneToImage);
    }
    return m_painter;
}

// `isInside` is true if the rect lies certainly within the image.
void ListPainter::Job::drawRect(const Primitive& primitive, bool isInside)
{
    const paintrules::Look look = paintrules::rectLook(
        primitive.fillColor, primitive.strokeColor, primitive.strokeWidth, statesOf(primitive.elementId));
    const QRectF rect = primitive.rect();
    const std::optional<int> opacity = isVisible(look.border) ? thinOpacity(look.borderWidth) : 0;
    if (m_isRaster && opacity && rect.width() >= 0 && rect.height() >= 0 && (isInside || isWithinReach(rect))) {
        m_rasteriser.fillRect(rect, look.fill);
        if (*opacity > 0)
            m_rasteriser.strokeRect(rect, look.border, *opacity);
        return;
    }
    ShapePainter(painter()).drawRect(rect, look);
}

void ListPainter::Job::drawLine(const Primitive& primitive)
{
    const QLineF line(primitive.a, primitive.b, primitive.c, primitive.d);
    const int width = paintrules::lineWidth(primitive.strokeWidth);
    const std::optional<int> opacity = thinOpacity(width);
    if (m_isRaster && opacity && isInside(line.x1(), line.y1()) && isInside(line.x2(), line.y2()) && !isPoint(line)) {
        m_rasteriser.drawLine(line, 0xff000000U | primitive.strokeColor, *opacity);
        return;
    }
    if (isDotOutside(line))
        return;
    ShapePainter(painter()).drawLine(primitive);
}

void ListPainter::Job::drawPolygon(const Primitive& primitive)
{
    const paintrules::Look look = paintrules::polygonLook(primitive.fillColor, statesOf(primitive.elementId));
    const auto [first, count] = primitive.corners;
    const QPointF* corners = m_list.corner(first);
    if (m_isRaster && !isVisible(look.border) && m_polygon.make(corners, count, m_mapping)) {
        m_rasteriser.drawMask(m_polygon.mask(), look.fill);
        return;
    }
    ShapePainter(painter()).drawPolygon(corners, count, look);
}

void ListPainter::Job::drawText(const Primitive& primitive)
{
    const TextLabel& label = *primitive.label;
    const int rotation = static_cast<int>(primitive.c);
    const QTransform toImage = textTransform(primitive, m_target.sceneToImage);
    if (primitive.d * toImage.m11() < m_target.smallestText)
        return;
    if (m_mayMask && rotation == 0 && primitive.d * toImage.m11() <= GlyphMasks::LargestSize
        && isNear(primitive.a, primitive.b) && m_shaper.hasNoDecoration()
        && (m_hasManyTexts || m_masks.isReadyFor(label, toImage.dx(), toImage.dy()))
        && m_masks.draw(label, toImage.dx(), toImage.dy(), m_target.textPen.color().rgba(), m_rasteriser))
        return;
    ShapePainter(painter()).drawText(primitive, m_shaper.font(label), m_target.textPen, m_target.sceneToImage);
}

ElementStates ListPainter::States::of(int elementId) const
{
    ElementStates states;
    states.setFlag(ElementState::Selected, selected->contains(elementId));
    states.setFlag(ElementState::Highlighted, highlighted->contains(elementId));
    states.setFlag(ElementState::Filtered, filtered && filtered->contains(elementId));
    return states;
}

ListPainter::ListPainter(DisplayList& list)
    : m_list(list)
    , m_shaper(list.labels())
    , m_masks(m_shaper)
{ }

void ListPainter::paint(const Target& target, const QList<int>& layers, const States& states)
{
    Job(m_list, m_shaper, m_masks, target, states).paint(layers);
}

void ListPainter::visitTouching(const QTransform& sceneToImage, const std::vector<QRect>& strips,
    const QList<int>& layers, const TouchVisitor& visitor)
{
    for (const QRect& strip : strips) {
        const QRectF area = sceneArea(sceneToImage, strip);
        for (int place : m_list.placesIn(area)) {
            const Primitive& primitive = m_list.primitive(place);
            const QRectF bounds = m_list.boundsOf(place);
            if (touches(bounds, area) && layers.contains(m_list.layers()[primitive.layer]))
                visitor(primitive, enlarged(sceneToImage.mapRect(bounds), PenMargin), strip);
        }
    }
}

} // namespace mirn::zelchipview
