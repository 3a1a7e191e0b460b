// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/elementgrid.h"
#include "graphics/painting/textlabels.h"

#include <QPointF>
#include <QRectF>

#include <vector>

namespace mirn::zelchipview {

class ChipElement;
class ElementIndex;

// What painting needs to know of one element, without a pointer to follow for the kinds that are frequent.
struct Primitive
{
    enum Kind : unsigned { Rect, Line, Polygon, Text };

    // Rect: x, y, width, height. Line: both ends. Polygon: its bounding rect, like a rect. Text: the start of its base
    // line, its rotation in degrees and its font's pixel size.
    double a;
    double b;
    double c;
    double d;
    union {
        double strokeWidth; // of rects and lines, as the drawing gives it
        struct
        {
            int first; // for DisplayList::corner()
            int count;
        } corners;
        const TextLabel* label; // the list's
    };
    unsigned int strokeColor;
    unsigned int fillColor;
    int elementId;
    unsigned layer : 24; // index for DisplayList::layers()
    Kind kind : 8;

    [[nodiscard]] QRectF rect() const { return QRectF(a, b, c, d); }

    // Whether it has, or may have, edges that are neither horizontal nor vertical.
    [[nodiscard]] bool isSlanted() const { return kind == Polygon || (kind == Line && a != c && b != d); }

    // Without an area, and for lines without a length: what Qt holds for its shape is for the item to say.
    [[nodiscard]] bool isFlat() const { return kind == Line ? a == c && b == d : kind != Text && (c == 0 || d == 0); }
};

// The elements of a scene in the order in which they are painted, and where to find them. It is made anew when elements
// come or go; what of their look changes is read again from their attributes.
class DisplayList final
{
public:
    // Brings the list up to date with the index's elements.
    void update(ElementIndex& index);

    // Counts what concerns more than single elements: other elements, or some of them in other places.
    [[nodiscard]] unsigned version() const { return m_version; }

    // The element's attribute may have changed. Returns whether it looks different now; where it lies is right again
    // after update().
    bool takeOver(ElementIndex& index, ChipElement& element);

    // The same for all elements in an area, and maybe others, whose attributes a host may have changed. Returns those
    // that look different.
    [[nodiscard]] std::vector<ChipElement*> takeOver(ElementIndex& index, const QRectF& area);

    [[nodiscard]] int size() const { return static_cast<int>(m_primitives.size()); }
    [[nodiscard]] int textCount() const { return m_textCount; }
    [[nodiscard]] const Primitive& primitive(int place) const { return m_primitives[place]; }
    [[nodiscard]] ChipElement* element(int place) const { return m_elements[place]; }

    // -1 for an element of another scene.
    [[nodiscard]] int placeOf(const ChipElement& element) const;

    // What a primitive may cover, in scene units; a hairline reaches a pixel further.
    [[nodiscard]] QRectF boundsOf(int place) const;

    // The places of the primitives that may touch an area, in paint order.
    [[nodiscard]] const std::vector<int>& placesIn(const QRectF& area);

    // The same for areas that may hold most of the primitives.
    [[nodiscard]] const std::vector<ElementGrid::Found>& foundIn(const QRectF& area, const QRectF& inner);

    // The first of a polygon's corners, which lie one after the other.
    [[nodiscard]] const QPointF* corner(int first) const { return m_corners.data() + first; }

    // The numbers of the layers that occur.
    [[nodiscard]] const std::vector<int>& layers() const { return m_layers; }
    [[nodiscard]] const TextLabels& labels() const { return m_labels; }

private:
    void take(ElementIndex& index);
    void append(ChipElement* element);
    void readLook(const ChipElement& element, Primitive& primitive);
    void readText(const ChipElement& element, Primitive& primitive);
    [[nodiscard]] unsigned layerIndex(int layer);

    std::vector<Primitive> m_primitives;
    std::vector<ChipElement*> m_elements; // of the primitive at the same place
    std::vector<QPointF> m_corners; // of all polygons
    int m_textCount = 0;
    std::vector<int> m_layers;
    QHash<int, unsigned> m_layerIndexes; // by number
    TextLabels m_labels;
    ElementGrid m_grid;
    std::vector<int> m_places;
    std::vector<ElementGrid::Found> m_found;
    unsigned m_indexVersion = 0; // when the list was made
    unsigned m_version = 0;
    bool m_areBoundsOld = false; // of some of the primitives in the grid
};

} // namespace mirn::zelchipview
