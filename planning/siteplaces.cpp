// SPDX-License-Identifier: MIT
#include "planning/siteplaces.h"

#include "graphics/elements/chipelement.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsItem>

#include <algorithm>
#include <cmath>
#include <limits>

namespace mirn::zelchipview {

namespace {

constexpr double WeightOfDeviation = 2.0; // how much farther a place straight ahead may be than one aside

// How far a way leads in a direction, and how far aside.
struct Way
{
    double ahead;
    double aside;
};

Way along(const QPointF& way, Direction direction)
{
    switch (direction) {
    case Direction::Left:
        return {-way.x(), std::abs(way.y())};
    case Direction::Right:
        return {way.x(), std::abs(way.y())};
    case Direction::Up:
        return {-way.y(), std::abs(way.x())};
    case Direction::Down:
        break;
    }
    return {way.y(), std::abs(way.x())};
}

// Returns the place with the least cost; one with an infinite cost never wins.
template <typename Cost> const SitePlace* cheapest(const std::vector<SitePlace>& places, const Cost& costOf)
{
    const SitePlace* best = nullptr;
    double least = std::numeric_limits<double>::infinity();
    for (const SitePlace& place : places) {
        const double cost = costOf(place.area.center());
        if (cost < least) {
            least = cost;
            best = &place;
        }
    }
    return best;
}

} // namespace

QGraphicsItem* outlineOf(ZelGraphicsScene& scene, int id)
{
    const QList<QGraphicsItem*> items = scene.itemsOf(id);
    const auto isBefore = [](const QGraphicsItem* a, const QGraphicsItem* b) {
        const bool isRect = a->type() == QGraphicsRectItem::Type;
        const bool isOtherRect = b->type() == QGraphicsRectItem::Type;
        return isRect != isOtherRect ? isRect : a->zValue() < b->zValue();
    };
    const auto lowest = std::min_element(items.begin(), items.end(), isBefore);
    return lowest != items.end() ? *lowest : nullptr;
}

std::optional<QPointF> middleOf(ZelGraphicsScene& scene, int id)
{
    const QGraphicsItem* item = outlineOf(scene, id);
    return item ? std::make_optional(item->sceneBoundingRect().center()) : std::nullopt;
}

std::optional<SitePlace> placeOf(ZelGraphicsScene& scene, int id)
{
    const QGraphicsItem* item = outlineOf(scene, id);
    // The controller would take an attribute that it returns for one that the host may change.
    const auto* element = dynamic_cast<const ChipElement*>(item);
    if (!element || !element->attribute())
        return {};
    return SitePlace{id, item->sceneBoundingRect(), element->attribute()->layer};
}

std::vector<SitePlace> visiblePlaces(ZelGraphicsScene& scene, const std::vector<int>& ids)
{
    std::vector<SitePlace> places;
    for (int id : ids) {
        const std::optional<SitePlace> place = placeOf(scene, id);
        if (place && scene.isLayerVisible(place->layer))
            places.push_back(*place);
    }
    return places;
}

const SitePlace* nextPlace(const std::vector<SitePlace>& places, const QPointF& middle, Direction direction)
{
    return cheapest(places, [&](const QPointF& other) {
        const Way way = along(other - middle, direction);
        const bool counts = way.ahead > 0 && way.aside <= way.ahead;
        return counts ? way.ahead + WeightOfDeviation * way.aside : std::numeric_limits<double>::infinity();
    });
}

const SitePlace* nearestPlace(const std::vector<SitePlace>& places, const QPointF& point)
{
    return cheapest(
        places, [&](const QPointF& other) { return std::hypot(other.x() - point.x(), other.y() - point.y()); });
}

} // namespace mirn::zelchipview
