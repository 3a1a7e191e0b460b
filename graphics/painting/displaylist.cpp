// SPDX-License-Identifier: MIT
#include "graphics/painting/displaylist.h"

#include "graphics/chipelement.h"
#include "graphics/elementindex.h"
#include "graphics/grown.h"
#include "graphics/paintrules.h"

#include <QLineF>
#include <QPolygonF>

#include <algorithm>
#include <cmath>
#include <utility>

namespace mirn::zelchipview {

namespace {

// Of a text's document, in scene units.
constexpr double DocumentMargin = 2 * 4 * paintrules::TextItemScale; // on both sides, counted on each
constexpr double LongestTab = 80 * paintrules::TextItemScale;

template <typename Value> Value valueOf(ZELGraphicItemAttribute& attribute, zelgraphic_attribute_key key)
{
    const void* data = attribute.getAttribute(key);
    return data ? *static_cast<const Value*>(data) : Value();
}

void setRect(Primitive& primitive, const QRectF& rect)
{
    primitive.a = rect.x();
    primitive.b = rect.y();
    primitive.c = rect.width();
    primitive.d = rect.height();
}

// What a text and the rect of its document may cover; no glyph is expected to be wider than two of the font's squares.
QRectF textBounds(const Primitive& text)
{
    const double square = std::abs(text.d) * paintrules::TextItemScale;
    const double length = 2 * square * static_cast<double>(1 + text.label->text.size());
    if (text.c == 0 && text.label->isSingleLine)
        return grown(QRectF(text.a - square, text.b - 3 * square, square + length, 5 * square), DocumentMargin);
    const double tabs = text.label->isSingleLine ? 0.0 : LongestTab * static_cast<double>(text.label->text.size());
    return grown(QRectF(text.a, text.b, 0, 0), length + tabs + DocumentMargin);
}

} // namespace

void DisplayList::update(ElementIndex& index)
{
    if (m_version == index.version())
        return;
    m_version = index.version();
    m_elements = index.inPaintOrder();
    m_primitives.clear();
    m_corners.clear();
    m_textCount = 0;
    m_primitives.reserve(m_elements.size());
    m_layers.clear();
    m_layerIndexes.clear();
    for (ChipElement* element : m_elements)
        append(element);
    m_grid.build(size(), [this](int place) { return boundsOf(place); });
}

void DisplayList::append(ChipElement* element)
{
    ZELGraphicItemAttribute& attribute = *element->attribute();
    element->m_place = size();
    Primitive made{};
    made.elementId = attribute.itemId;
    made.layer = layerIndex(attribute.layer);
    made.fillColor = valueOf<unsigned int>(attribute, ATTR_FILL_COLOR);
    made.strokeColor = valueOf<unsigned int>(attribute, ATTR_STROKE_COLOR);
    switch (element->kind()) {
    case ZEL_GRAPHIC_LINE: {
        made.kind = Primitive::Line;
        const QLineF line = valueOf<QLineF>(attribute, ATTR_LINE);
        setRect(made, QRectF(line.x1(), line.y1(), line.x2(), line.y2()));
        made.strokeWidth = valueOf<double>(attribute, ATTR_STROKE_WIDTH);
        break;
    }
    case ZEL_GRAPHIC_POLYGON: {
        const auto corners = valueOf<QPolygonF>(attribute, ATTR_POINTS);
        made.kind = Primitive::Polygon;
        made.corners = {static_cast<int>(m_corners.size()), static_cast<int>(corners.size())};
        m_corners.insert(m_corners.end(), corners.begin(), corners.end());
        setRect(made, corners.boundingRect());
        break;
    }
    case ZEL_GRAPHIC_TEXT: {
        made.kind = Primitive::Text;
        ++m_textCount;
        const QPointF position = valueOf<QPointF>(attribute, ATTR_POS);
        const QString family = valueOf<QString>(attribute, ATTR_FONT_FAMILY);
        const auto fontSize = valueOf<double>(attribute, ATTR_FONT_SIZE);
        setRect(made,
            QRectF(position.x(), position.y(), valueOf<int>(attribute, ATTR_ROTATION),
                paintrules::textPixelSize(fontSize)));
        made.label = m_labels.label(valueOf<QString>(attribute, ATTR_TEXT), family, fontSize);
        break;
    }
    default:
        made.kind = Primitive::Rect;
        setRect(made, valueOf<QRectF>(attribute, ATTR_RECT));
        made.strokeWidth = valueOf<double>(attribute, ATTR_STROKE_WIDTH);
    }
    m_primitives.push_back(made);
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

bool DisplayList::updateLook(const ChipElement& element)
{
    const int place = placeOf(element);
    if (place < 0)
        return false;
    const auto color = valueOf<unsigned int>(*element.attribute(), ATTR_FILL_COLOR);
    return std::exchange(m_primitives[place].fillColor, color) != color;
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
        return grown(QRectF(QPointF(primitive.a, primitive.b), QPointF(primitive.c, primitive.d)).normalized(),
            paintrules::lineWidth(primitive.strokeWidth));
    case Primitive::Text:
        return textBounds(primitive);
    case Primitive::Polygon:
        return primitive.rect();
    default:
        return grown(primitive.c >= 0 && primitive.d >= 0 ? primitive.rect() : primitive.rect().normalized(),
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
