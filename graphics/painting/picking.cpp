// SPDX-License-Identifier: MIT
#include "graphics/painting/picking.h"

#include "graphics/elements/chipelement.h"
#include "graphics/elements/enlarged.h"
#include "graphics/elements/paintrules.h"
#include "graphics/painting/displaylist.h"

#include <QGraphicsItem>
#include <QGraphicsLineItem>
#include <QGraphicsTextItem>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <memory>

namespace mirn::zelchipview::picking {

namespace {

constexpr double Hair = 1e-5; // the assumed width of a shape without a width, in scene units

constexpr double TextMargin = 1; // scene units that a text may reach beyond its bounds in the list

// Unlike QRectF::contains(), this accepts a rect without width or height.
bool encloses(const QRectF& area, const QRectF& rect)
{
    return area.left() <= rect.left() && rect.right() <= area.right() && area.top() <= rect.top()
        && rect.bottom() <= area.bottom();
}

// This is Qt's rule: the right and the lower border do not belong to an item unless it has no width or no height.
bool boundsContain(const QRectF& bounds, const QPointF& position)
{
    const double right = bounds.right() + (bounds.width() == 0 ? Hair : 0);
    const double bottom = bounds.bottom() + (bounds.height() == 0 ? Hair : 0);
    return position.x() >= bounds.left() - Hair && position.x() < right && position.y() >= bounds.top() - Hair
        && position.y() < bottom;
}

// Returns whether a position certainly lies in a rect: further inside than its border reaches.
bool isWithinBorder(const Primitive& primitive, const QRectF& bounds, const QPointF& position)
{
    if (primitive.kind != Primitive::Rect)
        return false;
    const QRectF inner = enlarged(bounds, -std::abs(primitive.strokeWidth) - Hair);
    return inner.isValid() && inner.contains(position); // a rect with a negative size contains positions, too
}

bool isArea(const Primitive& primitive)
{
    return primitive.kind == Primitive::Rect || primitive.kind == Primitive::Polygon;
}

// Returns whether a rect certainly shares more than a border with an area.
bool overlaps(const Primitive& primitive, const QRectF& area)
{
    const QRectF common = primitive.kind == Primitive::Rect ? primitive.rect() & area : QRectF();
    return common.width() > Hair && common.height() > Hair;
}

bool touches(ChipElement* element, const QPainterPath& path)
{
    QGraphicsItem* item = element ? element->graphicsItem() : nullptr;
    return item && item->collidesWithPath(item->mapFromScene(path), Qt::IntersectsItemShape);
}

// Answers for all pending elements that have no item: a pending line lies at the origin without a length, and a pending
// text has an empty document at its position.
class PendingShapes final
{
public:
    [[nodiscard]] bool touch(const Primitive& primitive, const QPainterPath& path)
    {
        if (primitive.kind == Primitive::Line)
            return m_line.collidesWithPath(path, Qt::IntersectsItemShape);
        if (!m_text)
            m_text = std::make_unique<QGraphicsTextItem>();
        m_text->setPos(primitive.a, primitive.b);
        m_text->setScale(paintrules::TextItemScale);
        return m_text->collidesWithPath(m_text->mapFromScene(path), Qt::IntersectsItemShape);
    }

private:
    const QGraphicsLineItem m_line;
    std::unique_ptr<QGraphicsTextItem> m_text; // made when the first text is tested
};

// Whether the shape of an element touches an area.
class TouchTest final
{
public:
    TouchTest(DisplayList& list, const QRectF& area, const IsPending& isPending)
        : m_list(list)
        , m_area(area)
        , m_isPending(isPending)
    {
        m_path.addRect(area);
    }

    [[nodiscard]] bool operator()(const ElementGrid::Found& found)
    {
        const int place = found.place;
        const Primitive& primitive = m_list.primitive(place);
        // An element inside the area needs no test of its shape unless it is flat, and those with an area have their
        // shape from the beginning.
        const bool isCertain = found.isInside && !primitive.isFlat();
        if (isCertain && isArea(primitive))
            return true;
        if (m_isPending && m_isPending(place))
            return isArea(primitive) || m_list.knownElement(place) ? touches(m_list.element(place), m_path)
                                                                   : m_pending.touch(primitive, m_path);
        if (isCertain)
            return true;
        const QRectF bounds = m_list.boundsOf(place);
        const double margin = primitive.kind == Primitive::Text ? TextMargin : Hair;
        if (!zelchipview::touches(enlarged(bounds, margin), m_area))
            return false;
        if (encloses(m_area, bounds) && !primitive.isFlat())
            return true;
        return overlaps(primitive, m_area) || touches(m_list.element(place), m_path);
    }

private:
    DisplayList& m_list;
    const QRectF m_area;
    const IsPending& m_isPending;
    QPainterPath m_path;
    PendingShapes m_pending;
};

// Returns a value for each place that touches an area, the topmost first.
template <typename ValueOf>
std::vector<int> valuesTouching(DisplayList& list, const QRectF& area, const IsPending& isPending, ValueOf valueOf)
{
    const std::vector<ElementGrid::Found>& all = list.foundIn(area, area);
    TouchTest isTouched(list, area, isPending);
    std::vector<int> values;
    values.reserve(all.size());
    for (auto found = all.rbegin(); found != all.rend(); ++found) {
        if (isTouched(*found))
            values.push_back(valueOf(found->place));
    }
    return values;
}

} // namespace

QGraphicsItem* topmostItem(DisplayList& list, const QPointF& point)
{
    const std::vector<int>& places = list.placesIn(around(point));
    for (auto place = places.rbegin(); place != places.rend(); ++place) {
        if (!enlarged(list.boundsOf(*place), 1).contains(point))
            continue;
        ChipElement* element = list.element(*place);
        QGraphicsItem* item = element ? element->graphicsItem() : nullptr;
        if (!item)
            continue;
        const QPointF position = item->mapFromScene(point);
        const QRectF bounds = item->boundingRect();
        if (!boundsContain(bounds, position))
            continue;
        // contains() builds the item's shape at each call, so it is called only where a border may be.
        if (isWithinBorder(list.primitive(*place), bounds, position) || item->contains(position))
            return item;
    }
    return nullptr;
}

int topmostTouching(DisplayList& list, const QRectF& area, const IsPending& isPending, const IsWanted& isWanted)
{
    const std::vector<ElementGrid::Found> all = list.foundIn(area, area); // a copy: making an item may search, too
    TouchTest isTouched(list, area, isPending);
    const auto first = std::find_if(all.rbegin(), all.rend(),
        [&](const ElementGrid::Found& found) { return isWanted(list.primitive(found.place)) && isTouched(found); });
    return first == all.rend() ? -1 : first->place;
}

std::vector<int> placesTouching(DisplayList& list, const QRectF& area, const IsPending& isPending)
{
    return valuesTouching(list, area, isPending, [](int place) { return place; });
}

std::vector<int> idsTouching(DisplayList& list, const QRectF& area, const IsPending& isPending)
{
    return valuesTouching(list, area, isPending, [&list](int place) { return list.primitive(place).elementId; });
}

std::vector<int> outermost(DisplayList& list, const std::vector<int>& places)
{
    QRectF all;
    std::vector<int> outer;
    const auto add = [&](int place) {
        ChipElement* element = list.element(place);
        if (!element)
            return;
        all |= element->graphicsItem()->sceneBoundingRect();
        outer.push_back(place);
    };
    // Each of these reaches furthest in one direction, by the bounds of the list, which are exact for areas.
    const auto addFurthest = [&](auto reach) {
        int furthest = -1;
        for (int place : places) {
            if (isArea(list.primitive(place)) && (furthest < 0 || reach(place) > reach(furthest)))
                furthest = place;
        }
        if (furthest >= 0)
            add(furthest);
    };
    addFurthest([&list](int place) { return -list.boundsOf(place).left(); });
    addFurthest([&list](int place) { return -list.boundsOf(place).top(); });
    addFurthest([&list](int place) { return list.boundsOf(place).right(); });
    addFurthest([&list](int place) { return list.boundsOf(place).bottom(); });
    for (int place : places) {
        if (!isArea(list.primitive(place)) && !all.contains(list.boundsOf(place)))
            add(place);
    }
    return outer;
}

} // namespace mirn::zelchipview::picking
