// SPDX-License-Identifier: MIT
#include "generator/cells.h"
#include "generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

using Turn = SvgWriter::Turn;

bool isUpright(const Site& site)
{
    return site.side == Side::Left || site.side == Side::Right;
}

// Returns the direction of a text that runs along the edge.
Turn alongEdge(const Site& site)
{
    switch (site.side) {
    case Side::Left:
        return Turn::Left;
    case Side::Right:
        return Turn::Right;
    default:
        return Turn::None;
    }
}

const std::string& attribute(const Site& site, const char* key)
{
    static const std::string none;
    for (const auto& [name, value] : site.attributes) {
        if (name == key)
            return value;
    }
    return none;
}

const char* padStyle(const Site& site)
{
    if (attribute(site, "function") == "clock")
        return "pad-clock";
    return attribute(site, "polarity") == "B" ? "pad-b" : "pad";
}

} // namespace

// Draws the strip between pads and core: the bank's name, or its I/O lanes at higher scales.
void drawBank(SvgWriter& svg, const Site& site)
{
    constexpr double Lane = 60;
    const EdgeCell cell{site.side, site.box};
    const double length = isUpright(site) ? site.box.height : site.box.width;
    const std::string number = site.name.substr(4);
    const Turn turn = alongEdge(site);
    drawBody(svg, LAYER_BASE, "bank", site.box);
    drawName(svg, LAYER_BLOCK_NAMES, cell.part(0, 32, length, 20), 13, "Bank " + number, turn);

    const int lanes = static_cast<int>(length / Lane);
    const double pitch = length / lanes;
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        for (int lane = 0; lane < lanes; ++lane)
            svg.rect("pad-part", cell.part(lane * pitch + 3, 36, pitch - 6, 12));
    }
    {
        const auto layer = svg.layer(LAYER_HEADERS);
        for (int lane = 0; lane < lanes; ++lane)
            svg.label(cell.part(lane * pitch + 3, 38, pitch - 6, 5), 2.6,
                "Bank " + number + " lane " + std::to_string(lane), turn);
    }
    drawWires(svg, "pad-wire",
        {{cell.point(3, 33), cell.point(length - 3, 33)}, {cell.point(3, 34.5), cell.point(length - 3, 34.5)},
            {cell.point(3, 51), cell.point(length - 3, 51)}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    for (int lane = 0; lane < lanes; ++lane)
        svg.label(cell.part(lane * pitch + 3, 43, pitch - 6, 3), 1.2, "EDGE CLOCK / DELAY LINE", turn);
}

// Draws, from the outside inwards, the bond pad, the buffer and the I/O logic.
void drawPad(SvgWriter& svg, const Site& site)
{
    const EdgeCell cell{site.side, site.box};
    const Box metal = cell.part(2.5, 1.5, 10, 10);
    drawBody(svg, LAYER_SITES, padStyle(site), site.box);
    drawName(svg, LAYER_TILE_NAMES, site.box, 5.6, site.name, isUpright(site) ? Turn::None : Turn::Left);
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.rect("pad-metal", metal);
        svg.polygon("pad-metal-fill", {cell.point(4, 13.5), cell.point(11, 13.5), cell.point(7.5, 18)});
    }
    drawName(svg, LAYER_HEADERS, metal, 2.4, site.name);
    const Box logic = cell.part(1.5, 20, 12, 7);
    drawParts(svg, {{"pad", logic, 2.4, "I/O", {"IN", "OUT", "TRI"}, isUpright(site) ? 1 : 3}});
    drawWires(
        svg, "pad-wire", {{cell.point(7.5, 11.5), cell.point(7.5, 13.5)}, {cell.point(7.5, 18), cell.point(7.5, 20)}});
    if (attribute(site, "function") == "clock")
        drawName(svg, LAYER_FINE_NAMES, metal.inner(0, 7.5, 10, 2), 1.2, "CLOCK");
}

void drawSupply(SvgWriter& svg, const Site& site)
{
    const EdgeCell cell{site.side, site.box};
    const Box metal = cell.part(2.5, 1.5, 10, 10);
    drawBody(svg, LAYER_SITES, "supply", site.box);
    drawName(svg, LAYER_TILE_NAMES, site.box, 5.2, site.name, isUpright(site) ? Turn::None : Turn::Left);
    drawBody(svg, LAYER_DETAIL, "supply-part", metal);
    drawParts(svg, {{"supply", cell.part(2, 16, 11, 10), 2.4, "CLAMP", {"TRIGGER", "SHUNT"}, 1}});
    drawWires(svg, "supply-wire", {{cell.point(7.5, 11.5), cell.point(7.5, 16)}});
    const auto layer = svg.layer(LAYER_HEADERS);
    svg.label(metal.inner(0, 1.5, 10, 3.5), 2.6, "VCCIO");
    svg.label(metal.inner(0, 5, 10, 3.5), 2.6, site.name.substr(5));
}

} // namespace mirn::zeldevicegenerator
