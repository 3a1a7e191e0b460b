// SPDX-License-Identifier: MIT

// The out-of-line destructors of the contract's interfaces: they keep each class's type information in this library,
// so that dynamic_cast works across library borders.

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelgraphicrecords.h"

zelattributes::~zelattributes() = default;

zelchipdata::~zelchipdata() = default;

zelchipengine::zelchipengine() = default;
zelchipengine::~zelchipengine() = default;

zel_SingleGraphItem::zel_SingleGraphItem(int graphicKind)
    : kind(graphicKind)
{ }
zel_SingleGraphItem::~zel_SingleGraphItem() = default;

zel_Line::zel_Line()
    : zel_SingleGraphItem(ZEL_GRAPHIC_LINE)
{ }
zel_Line::~zel_Line() = default;

zel_Rect::zel_Rect()
    : zel_SingleGraphItem(ZEL_GRAPHIC_RECT)
{ }
zel_Rect::~zel_Rect() = default;

zel_Polygon::zel_Polygon()
    : zel_SingleGraphItem(ZEL_GRAPHIC_POLYGON)
{ }
zel_Polygon::~zel_Polygon() = default;

zel_Text::zel_Text()
    : zel_SingleGraphItem(ZEL_GRAPHIC_TEXT)
{ }
zel_Text::~zel_Text() = default;
