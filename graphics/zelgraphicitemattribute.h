// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QString>

#include <cstddef>

class zel_SingleGraphItem;

namespace mirn::zelchipview {

// The keys of getAttribute(), each with the type that the returned pointer points to.
enum zelgraphic_attribute_key {
    ATTR_LINE = 0, // QLineF
    ATTR_TEXT = 1, // QString
    ATTR_POS = 2, // QPointF
    ATTR_ROTATION = 3, // int, degrees
    ATTR_FONT_FAMILY = 4, // QString
    ATTR_FONT_SIZE = 5, // double, scene units
    ATTR_STROKE_COLOR = 7, // unsigned int, 0xRRGGBB
    ATTR_STROKE_WIDTH = 8, // double, scene units
    ATTR_FILL_COLOR = 9, // unsigned int, 0xRRGGBB
    ATTR_RECT = 10, // QRectF
    ATTR_TOOLTIP = 11, // not served; a key for setToDefaultValue() only
    ATTR_POINTS = 12, // QPolygonF
};

// The drawing values of one graphic element, in Qt types. Items paint from it; the scene changes its fill colour and
// its tooltip at run time. The controller's registry owns it once it is stored there.
class ZELCHIPGUI_EXPORT ZELGraphicItemAttribute : public QObject
{
public:
    ZELGraphicItemAttribute();
    ~ZELGraphicItemAttribute() override = 0;

    // Attributes lie together in memory, in the order in which they were made, because each full repaint reads all that
    // a host holds.
    static void* operator new(std::size_t size);
    static void operator delete(void* attribute, std::size_t size);

    // Returns a pointer to the member that holds the value for `key`, or null if this kind of element does not serve
    // the key. The attribute keeps the ownership.
    [[nodiscard]] virtual void* getAttribute(zelgraphic_attribute_key key);

    // Copies from the record what all kinds share: id, name, tooltip, layer, kind and flag.
    virtual void setAttribute(const zel_SingleGraphItem& record);

    // These set the fill colour (0xRRGGBB) and restore the default of `key`. Both do nothing for lines and texts.
    virtual void setFillColor(const unsigned int& color);
    virtual void setToDefaultValue(zelgraphic_attribute_key key);

    int itemId = 0; // the engine's id of the element
    int sequence = 0; // the load number: 1, 2, 3, ... in load order
    QString elementName; // the element's name in the drawing
    QString toolTip; // the engine's, or else the drawing's
    int layer = -1; // shown while the scale is in the layer's range
    int kind = 4; // a zelgraphic_kind; 4 is none
    bool flag = false; // copied from the record; nothing here reads it

private:
    friend class AttributeRegistry;
    friend class DisplayList;
    friend class ElementIndex;

    bool m_isHandedOut = false; // a host holds a pointer to it and may change the values at any time
};

} // namespace mirn::zelchipview
