// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QString>

class zel_SingleGraphItem;

namespace mirn::zelchipview {

// Keys of the values that attributes serve; behind each, what getAttribute() points at.
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

// The drawing values of one graphic element, in Qt types: items paint from it, the scene changes it at run time. Owned
// by the controller's registry once it is stored there.
class ZELCHIPGUI_EXPORT ZELGraphicItemAttribute : public QObject
{
public:
    ZELGraphicItemAttribute();
    ~ZELGraphicItemAttribute() override = 0;

    // The member that holds the value for `key`, or null where the kind does not serve the key.
    [[nodiscard]] virtual void* getAttribute(zelgraphic_attribute_key key);

    // Takes what all kinds share from the record.
    virtual void setAttribute(const zel_SingleGraphItem& record);

    // Both do nothing for kinds whose look is fixed.
    virtual void setFillColor(const unsigned int& color);
    virtual void setToDefaultValue(zelgraphic_attribute_key key);

    int itemId = 0; // element id, the engine's
    int sequence = 0; // 1, 2, 3, ... in load order
    QString elementName; // in the drawing
    QString toolTip; // the engine's, or else the drawing's
    int layer = -1; // shown while the scale is in the layer's range
    int kind = 4; // a zelgraphic_kind; 4 is none
    bool flag = false; // the record's

private:
    friend class AttributeRegistry;
    friend class ElementIndex;

    bool m_isHandedOut = false; // somebody outside may change the values at any time
};

} // namespace mirn::zelchipview
