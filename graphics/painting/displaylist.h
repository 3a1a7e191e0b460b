// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/elementgrid.h"
#include "graphics/painting/text/textlabels.h"

#include <QPointF>
#include <QPolygonF>
#include <QRectF>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

class zel_Line;
class zel_Polygon;
class zel_Rect;
class zel_SingleGraphItem;
class zel_Text;

namespace mirn::zelchipview {

class ChipElement;
class ElementIndex;
class ZELGraphicItemAttribute;

// The values that painting an element needs, packed so that the frequent kinds are painted without following a pointer.
struct Primitive
{
    enum Kind : unsigned { Rect, Line, Polygon, Text };

    // Rect: x, y, width, height. Line: both ends. Polygon: its bounding rectangle, like a rect. Text: the start of its
    // base line, its rotation in degrees and its font's pixel size. Coordinates are in scene units.
    double a;
    double b;
    double c;
    double d;
    union {
        double strokeWidth; // for rects and lines, in scene units
        struct
        {
            int first; // index for DisplayList::corner()
            int count;
        } corners;
        const TextLabel* label; // owned by the display list
    };
    unsigned int strokeColor;
    unsigned int fillColor;
    int elementId;
    unsigned layer : 24; // index into DisplayList::layers()
    Kind kind : 8;

    [[nodiscard]] QRectF rect() const { return QRectF(a, b, c, d); }

    // Returns whether an edge is, or may be, neither horizontal nor vertical.
    [[nodiscard]] bool isSlanted() const { return kind == Polygon || (kind == Line && a != c && b != d); }

    // Returns true for a rect or polygon without an area and for a line without a length. Only the item itself knows
    // the shape that Qt uses for those.
    [[nodiscard]] bool isFlat() const { return kind == Line ? a == c && b == d : kind != Text && (c == 0 || d == 0); }
};

// The elements of a scene in paint order, each as a small record, with a spatial index. A place is an index in this
// list. The list is rebuilt when elements come or go; a changed look is read again from the attribute. The scene's
// elements object owns the list; the list owns no elements.
class DisplayList final
{
public:
    // Brings the list and its spatial index up to date with the index of elements.
    void update(ElementIndex& index);

    // Takes elements that have no item yet straight from the drawing's records, as the places 0, 1, 2 and so on of an
    // empty list. append() returns false for a record that is not drawn, or whose class does not match its kind; it
    // adds nothing then. finish() ends that: the list is up to date with the index, which has the same elements.
    void beginRecords(std::size_t count);
    [[nodiscard]] bool append(const zel_SingleGraphItem& record);
    void finishRecords(const ElementIndex& index);

    // Returns whether elements have come, gone or changed their order since the list was made.
    [[nodiscard]] bool isOutdated(const ElementIndex& index) const;

    // An element that was taken from a record has got its item.
    void adopt(ChipElement& element, int place);

    // Makes the item of a place that has none yet, by way of adopt().
    void setMaker(std::function<void(int place)> make) { m_make = std::move(make); }

    // The version counts the changes that affect more than the look of elements: they came, went, moved or changed
    // their order.
    [[nodiscard]] unsigned version() const { return m_version; }

    // Reads the element's attribute again. Returns whether the element looks different now. If it has moved, the
    // spatial index is right again after update().
    bool takeOver(ElementIndex& index, ChipElement& element);

    // Does the same for the watched elements in an area; if only few elements are watched, for all of them. Returns
    // those that look different.
    [[nodiscard]] std::vector<ChipElement*> takeOver(ElementIndex& index, const QRectF& area);

    [[nodiscard]] int size() const { return static_cast<int>(m_primitives.size()); }
    [[nodiscard]] int textCount() const { return m_textCount; }
    [[nodiscard]] const Primitive& primitive(int place) const { return m_primitives[place]; }

    // Returns the element at a place; its item is made if it has none yet, which may not succeed while the drawing is
    // taken down: null then. knownElement() makes nothing and returns null if there is no item.
    [[nodiscard]] ChipElement* element(int place);
    [[nodiscard]] ChipElement* knownElement(int place) const { return m_elements[place]; }

    // Returns -1 for an element that is not in this list.
    [[nodiscard]] int placeOf(const ChipElement& element) const;

    // Returns what a primitive may cover, in scene units. A hairline (a pen of width 0) reaches one pixel further.
    [[nodiscard]] QRectF boundsOf(int place) const;

    // Returns the places of the primitives that may touch an area, in paint order. Valid until the next call.
    [[nodiscard]] const std::vector<int>& placesIn(const QRectF& area);

    // Does the same for an area that may hold most of the primitives, and reports which of them lie inside of `inner`,
    // a part of the area. Valid until the next call.
    [[nodiscard]] const std::vector<ElementGrid::Found>& foundIn(const QRectF& area, const QRectF& inner);

    // Returns the corners of a polygon, which are contiguous.
    [[nodiscard]] const QPointF* corner(int first) const { return m_corners.data() + first; }

    // The numbers of the layers that occur.
    [[nodiscard]] const std::vector<int>& layers() const { return m_layers; }
    [[nodiscard]] const TextLabels& labels() const { return m_labels; }

private:
    void rebuild(ElementIndex& index);
    void append(ChipElement* element);
    void clear(std::size_t count);
    void take(const zel_Line& line, Primitive& primitive);
    void take(const zel_Rect& rect, Primitive& primitive);
    void take(const zel_Polygon& polygon, Primitive& primitive);
    void take(const zel_Text& text, Primitive& primitive);
    template <typename Record> [[nodiscard]] bool takeAs(const zel_SingleGraphItem& record, Primitive& primitive);
    void setCorners(const QPolygonF& corners, Primitive& primitive);
    void setLayer(int layer, Primitive& primitive);
    void readLook(ZELGraphicItemAttribute& attribute, Primitive& primitive);
    void readText(ZELGraphicItemAttribute& attribute, Primitive& primitive);
    [[nodiscard]] bool isOutdated(int place);
    [[nodiscard]] unsigned layerIndex(int layer);

    std::vector<Primitive> m_primitives;
    std::vector<ChipElement*> m_elements; // the element of the primitive at the same place; null without an item
    std::vector<ZELGraphicItemAttribute*> m_attributes; // that element's attribute, to compare it without the element
    std::vector<QPointF> m_corners; // the corners of all polygons
    int m_textCount = 0;
    std::vector<int> m_layers;
    QHash<int, unsigned> m_layerIndexes; // by layer number
    TextLabels m_labels;
    ElementGrid m_grid;
    std::vector<int> m_places;
    std::vector<ElementGrid::Found> m_found;
    unsigned m_indexVersion = 0; // the version of the element index that the list was built from
    unsigned m_version = 0;
    bool m_areBoundsOld = false; // the grid holds outdated bounds
    std::function<void(int place)> m_make;
};

} // namespace mirn::zelchipview
