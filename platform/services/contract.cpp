// SPDX-License-Identifier: MIT

// The out-of-line destructors of the contract's interfaces: they keep each class's type information in this library,
// so that dynamic_cast works across library borders. And the answers of an engine to optional questions that it does
// not know.

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zelplanengine.h"

zelattributes::~zelattributes() = default;

zelchipdata::~zelchipdata() = default;

zelchipengine::zelchipengine() = default;
zelchipengine::~zelchipengine() = default;

std::string zelchipengine::refusalReason(const std::string* /*rsc*/, const std::string* /*site*/)
{
    return {};
}

zelplanengine::zelplanengine() = default;
zelplanengine::~zelplanengine() = default;

std::vector<zelconnection> zelplanengine::connections()
{
    return {};
}

std::vector<zelconnection> zelplanengine::connectionsOf(const std::string* rsc)
{
    std::vector<zelconnection> result;
    for (const zelconnection& connection : connections()) {
        if (connection.from == *rsc || connection.to == *rsc)
            result.push_back(connection);
    }
    return result;
}

std::vector<int> zelplanengine::sitesFor(const std::string* /*rsc*/)
{
    return {};
}

std::vector<zelsite> zelplanengine::sites()
{
    return {};
}

std::vector<int> zelplanengine::sitesOfKind(const std::string* /*rsc*/)
{
    return {};
}

std::string zelplanengine::refusalToPlace(const std::string* /*rsc*/)
{
    return {};
}

std::vector<zelplacement> zelplanengine::placementsOf(const std::string* /*rsc*/, const std::string* /*site*/)
{
    return {};
}

bool zelplanengine::maySwap(const std::string* /*rsc*/, const std::string* /*other*/, std::string* /*reason*/)
{
    return false;
}

std::string zelplanengine::occupant(const std::string* /*site*/)
{
    return {};
}

int zelplanengine::siteOf(const std::string* /*rsc*/)
{
    return -1;
}

std::vector<std::string> zelplanengine::partsOf(const std::string* rsc)
{
    return {*rsc};
}

std::string zelplanengine::describe(const std::string* /*rsc*/)
{
    return {};
}

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
