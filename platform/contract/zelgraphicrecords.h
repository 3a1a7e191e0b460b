// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>
#include <vector>

// The kinds of graphic primitives of a chip drawing, as the parser passes them to the component.
//
// Coordinates, widths and font sizes of all primitives are in scene units (the root viewport of the drawing, y
// downwards). Colours are packed as 0xRRGGBB; bits above 23 are ignored. Texts are 8-bit (ISO 8859-1).
enum zelgraphic_kind {
    ZEL_GRAPHIC_LINE = 0, // a zel_Line
    ZEL_GRAPHIC_RECT = 1, // a zel_Rect
    ZEL_GRAPHIC_POLYGON = 2, // a zel_Polygon
    ZEL_GRAPHIC_TEXT = 3, // a zel_Text
};

// A corner of a polygon.
struct zel_Point
{
    double x = 0.0; // scene units
    double y = 0.0; // scene units, downwards
};

// A piece of a text with its position. The component stores spans and never draws them.
struct tspan
{
    double x = 0.0; // left end of the base line, scene units
    double y = 0.0; // the base line, scene units
    std::string text; // 8-bit
};

// The base of all primitives. The owner of the list that it is in (the parser) owns it, together with the texts that
// `name` and `tooltip` point to; both may be null, which means empty.
class ZELPLATFORM_EXPORT zel_SingleGraphItem
{
public:
    // The default is no kind.
    explicit zel_SingleGraphItem(int graphicKind = -1);
    virtual ~zel_SingleGraphItem();

    // Copying copies the pointers to name and tooltip, not the texts.
    zel_SingleGraphItem(const zel_SingleGraphItem&) = default;
    zel_SingleGraphItem& operator=(const zel_SingleGraphItem&) = default;

    int id = 0; // the engine's id of the element; negative if the drawing has none
    const char* name = nullptr; // the element's name in the drawing
    const char* tooltip = nullptr; // shown over the element unless the engine has another
    int layer = 0; // drawing layer; shown while the scale is in the layer's range
    int kind; // a zelgraphic_kind; any other value is skipped by readers
    bool flag = false; // for the host; the component stores it and does not use it
};

// A straight line.
class ZELPLATFORM_EXPORT zel_Line : public zel_SingleGraphItem
{
public:
    zel_Line();
    ~zel_Line() override;

    double x1 = 0.0; // the one end
    double y1 = 0.0; // the one end
    double x2 = 0.0; // the other end
    double y2 = 0.0; // the other end
    unsigned int strokeColor = 0; // 0xRRGGBB
    double strokeWidth = 0.0; // truncated to whole units; 0 is one pixel at every scale
};

// A rectangle with horizontal and vertical sides.
class ZELPLATFORM_EXPORT zel_Rect : public zel_SingleGraphItem
{
public:
    zel_Rect();
    ~zel_Rect() override;

    double x = 0.0; // the left side
    double y = 0.0; // the upper side
    double width = 0.0; // >= 0
    double height = 0.0; // >= 0
    unsigned int fillColor = 0; // 0xRRGGBB
    unsigned int strokeColor = 0; // 0xRRGGBB
    double strokeWidth = 0.0; // 0 for no border
    std::string text; // stored, not drawn
};

// A closed polygon.
class ZELPLATFORM_EXPORT zel_Polygon : public zel_SingleGraphItem
{
public:
    zel_Polygon();
    ~zel_Polygon() override;

    std::vector<zel_Point> points; // the corners in order; the last is joined to the first
    unsigned int fillColor = 0; // 0xRRGGBB
    unsigned int strokeColor = 0; // stored, not drawn: a border is made of lines
    double strokeWidth = 0.0; // stored, not drawn
    std::string text; // stored, not drawn
};

// One line of text.
class ZELPLATFORM_EXPORT zel_Text : public zel_SingleGraphItem
{
public:
    zel_Text();
    ~zel_Text() override;

    std::string text; // the text that is drawn
    double x = 0.0; // left end of the base line
    double y = 0.0; // the base line
    double fontSize = 0.0; // height of the font in scene units
    std::string fontFamily; // Qt replaces a family that is not installed
    unsigned int fillColor = 0; // 0xRRGGBB
    int rotation = 0; // degrees, clockwise, around (x, y)
    std::vector<tspan> spans; // stored, not drawn
};
