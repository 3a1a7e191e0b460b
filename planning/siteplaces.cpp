// SPDX-License-Identifier: MIT
#include "planning/siteplaces.h"

#include "graphics/elements/chipelement.h"
#include "graphics/painting/displaylist.h"
#include "graphics/sceneelements.h"
#include "graphics/zelgraphicsscene.h"

#include <QGraphicsItem>

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
    const int outline = scene.elements().outlineOf(id);
    ChipElement* element = outline >= 0 ? scene.elements().displayList().element(outline) : nullptr;
    return element ? element->graphicsItem() : nullptr;
}

std::optional<QPointF> middleOf(ZelGraphicsScene& scene, int id)
{
    const std::optional<SitePlace> place = placeOf(scene, id);
    return place ? std::make_optional(place->area.center()) : std::nullopt;
}

std::optional<SitePlace> placeOf(ZelGraphicsScene& scene, int id)
{
    SceneElements& elements = scene.elements();
    const int outline = elements.outlineOf(id);
    if (outline < 0)
        return {};
    DisplayList& list = elements.displayList();
    const Primitive& primitive = list.primitive(outline);
    const int layer = list.layers()[primitive.layer];
    if (!list.knownElement(outline) && primitive.kind != Primitive::Text)
        return SitePlace{id, list.boundsOf(outline), layer}; // no item need be made
    ChipElement* element = list.element(outline);
    return element ? std::make_optional(SitePlace{id, element->graphicsItem()->sceneBoundingRect(), layer})
                   : std::nullopt;
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
