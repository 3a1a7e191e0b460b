// SPDX-License-Identifier: MIT
#include "graphics/painting/displaylist.h"

#include "graphics/elements/chipelement.h"
#include "graphics/elements/elementindex.h"
#include "graphics/elements/enlarged.h"
#include "graphics/elements/paintrules.h"
#include "graphics/zelgraphicitemattribute.h"

#include <QLineF>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace mirn::zelchipview {

namespace {

// The text document's margin and tab stops, in scene units.
constexpr double DocumentMargin = 2 * 4 * paintrules::TextItemScale; // the margins of both sides, added on each side
constexpr double LongestTab = 80 * paintrules::TextItemScale;

void setRect(Primitive& primitive, const QRectF& rect)
{
    primitive.a = rect.x();
    primitive.b = rect.y();
    primitive.c = rect.width();
    primitive.d = rect.height();
}

// Returns an upper bound of what a text and its document cover. A glyph is assumed to be at most two em squares wide.
QRectF textBounds(const Primitive& text)
{
    const double square = std::abs(text.d) * paintrules::TextItemScale;
    const double length = 2 * square * static_cast<double>(1 + text.label->text.size());
    if (text.c == 0 && text.label->isSingleLine)
        return enlarged(QRectF(text.a - square, text.b - 3 * square, square + length, 5 * square), DocumentMargin);
    const double tabs = text.label->isSingleLine ? 0.0 : LongestTab * static_cast<double>(text.label->text.size());
    return enlarged(QRectF(text.a, text.b, 0, 0), length + tabs + DocumentMargin);
}

// Returns the value that the attribute serves under `key`, or a default-constructed one.
template <typename Value> Value valueOf(ZELGraphicItemAttribute& attribute, zelgraphic_attribute_key key)
{
    const void* data = attribute.getAttribute(key);
    return data ? *static_cast<const Value*>(data) : Value();
}

// Comparing bytes treats an unchanged NaN as unchanged.
bool isSame(const Primitive& one, const Primitive& other)
{
    return std::memcmp(&one, &other, sizeof(Primitive)) == 0;
}

} // namespace

void DisplayList::update(ElementIndex& index)
{
    if (m_indexVersion == index.version() && !m_areBoundsOld)
        return;
    if (m_indexVersion != index.version())
        rebuild(index);
    m_grid.build(size(), [this](int place) { return boundsOf(place); });
    m_areBoundsOld = false;
    ++m_version;
}

void DisplayList::rebuild(ElementIndex& index)
{
    m_indexVersion = index.version();
    m_elements = index.inPaintOrder();
    clear(m_elements.size());
    for (ChipElement* element : m_elements)
        append(element);
}

void DisplayList::clear(std::size_t count)
{
    m_primitives.clear();
    m_attributes.clear();
    m_corners.clear();
    m_textCount = 0;
    m_primitives.reserve(count);
    m_attributes.reserve(count);
    m_layers.clear();
    m_layerIndexes.clear();
}

void DisplayList::append(ChipElement* element)
{
    element->m_place = size();
    Primitive made{};
    switch (element->kind()) {
    case ZEL_GRAPHIC_LINE:
        made.kind = Primitive::Line;
        break;
    case ZEL_GRAPHIC_POLYGON:
        made.kind = Primitive::Polygon;
        setCorners(element->value<QPolygonF>(ATTR_POINTS), made);
        break;
    case ZEL_GRAPHIC_TEXT: {
        made.kind = Primitive::Text;
        ++m_textCount;
        const auto position = element->value<QPointF>(ATTR_POS);
        made.a = position.x();
        made.b = position.y();
        break;
    }
    default:
        made.kind = Primitive::Rect;
        setRect(made, element->value<QRectF>(ATTR_RECT));
    }
    readLook(*element->m_attribute, made);
    m_primitives.push_back(made);
    m_attributes.push_back(element->m_attribute);
}

void DisplayList::setCorners(const QPolygonF& corners, Primitive& primitive)
{
    primitive.corners = {static_cast<int>(m_corners.size()), static_cast<int>(corners.size())};
    m_corners.insert(m_corners.end(), corners.begin(), corners.end());
    setRect(primitive, corners.boundingRect());
}

void DisplayList::setLayer(int layer, Primitive& primitive)
{
    if (m_layers.empty() || primitive.layer >= m_layers.size() || m_layers[primitive.layer] != layer)
        primitive.layer = layerIndex(layer);
}

// Reads the values that an item's own paint() reads at every paint.
void DisplayList::readLook(ZELGraphicItemAttribute& attribute, Primitive& primitive)
{
    primitive.elementId = attribute.itemId;
    setLayer(attribute.layer, primitive);
    if (primitive.kind != Primitive::Line)
        primitive.fillColor = valueOf<unsigned int>(attribute, ATTR_FILL_COLOR);
    if (primitive.kind == Primitive::Text) {
        readText(attribute, primitive);
    } else if (primitive.kind != Primitive::Polygon) {
        primitive.strokeColor = valueOf<unsigned int>(attribute, ATTR_STROKE_COLOR);
        primitive.strokeWidth = valueOf<double>(attribute, ATTR_STROKE_WIDTH);
    }
    if (primitive.kind == Primitive::Line) {
        const auto line = valueOf<QLineF>(attribute, ATTR_LINE);
        setRect(primitive, QRectF(line.x1(), line.y1(), line.x2(), line.y2())); // both ends, not a rect
    }
}

void DisplayList::readText(ZELGraphicItemAttribute& attribute, Primitive& primitive)
{
    const auto text = valueOf<QString>(attribute, ATTR_TEXT);
    const auto family = valueOf<QString>(attribute, ATTR_FONT_FAMILY);
    const auto fontSize = valueOf<double>(attribute, ATTR_FONT_SIZE);
    primitive.c = valueOf<int>(attribute, ATTR_ROTATION);
    primitive.d = paintrules::textPixelSize(fontSize);
    const TextLabel* label = primitive.label;
    if (!label || label->text != text || m_labels.font(label->font).pixelSize() != primitive.d
        || m_labels.font(label->font).family() != family)
        primitive.label = m_labels.label(text, family, fontSize);
}

bool DisplayList::takeOver(ElementIndex& index, ChipElement& element)
{
    const int place = placeOf(element);
    if (place < 0)
        return false;
    const Primitive before = m_primitives[place];
    Primitive now = before;
    readLook(*element.m_attribute, now);
    if (isSame(before, now))
        return false;
    const QRectF boundsBefore = boundsOf(place);
    m_primitives[place] = now;
    m_areBoundsOld = m_areBoundsOld || boundsOf(place) != boundsBefore;
    if (now.elementId != before.elementId)
        index.renumber(&element, before.elementId);
    if (now.layer != before.layer)
        index.changeLayer(&element);
    return true;
}

bool DisplayList::isOutdated(int place)
{
    Primitive now = m_primitives[place];
    readLook(*m_attributes[place], now);
    return !isSame(m_primitives[place], now);
}

std::vector<ChipElement*> DisplayList::takeOver(ElementIndex& index, const QRectF& area)
{
    // Up to this many watched elements are all checked; if there are more, only those in the area are.
    constexpr std::size_t FewWatched = 1000;
    std::vector<ChipElement*> changed;
    if (index.watchedUpperBound() <= FewWatched) {
        for (ChipElement* element : index.watched()) {
            element->updateToolTip();
            if (takeOver(index, *element))
                changed.push_back(element);
        }
        return changed;
    }
    for (int place : placesIn(area)) {
        if (m_attributes[place] && m_attributes[place]->m_isHandedOut && isOutdated(place) && takeOver(index, *m_elements[place]))
            changed.push_back(m_elements[place]);
    }
    return changed;
}

unsigned DisplayList::layerIndex(int layer)
{
    const auto known = m_layerIndexes.constFind(layer);
    if (known != m_layerIndexes.constEnd())
        return known.value();
    const auto index = static_cast<unsigned>(m_layers.size());
    m_layers.push_back(layer);
    m_layerIndexes.insert(layer, index);
    return index;
}

int DisplayList::placeOf(const ChipElement& element) const
{
    const int place = element.m_place;
    return place >= 0 && place < size() && m_elements[place] == &element ? place : -1;
}

QRectF DisplayList::boundsOf(int place) const
{
    const Primitive& primitive = m_primitives[place];
    switch (primitive.kind) {
    case Primitive::Line:
        return enlarged(QRectF(QPointF(primitive.a, primitive.b), QPointF(primitive.c, primitive.d)).normalized(),
            paintrules::lineWidth(primitive.strokeWidth));
    case Primitive::Text:
        return textBounds(primitive);
    case Primitive::Polygon:
        return primitive.rect();
    default:
        return enlarged(primitive.c >= 0 && primitive.d >= 0 ? primitive.rect() : primitive.rect().normalized(),
            std::abs(primitive.strokeWidth) / 2);
    }
}

const std::vector<int>& DisplayList::placesIn(const QRectF& area)
{
    m_places.clear();
    m_grid.find(area, m_places);
    return m_places;
}

const std::vector<ElementGrid::Found>& DisplayList::foundIn(const QRectF& area, const QRectF& inner)
{
    m_found.clear();
    m_grid.find(area, inner, m_found);
    return m_found;
}

} // namespace mirn::zelchipview
