// SPDX-License-Identifier: MIT
#include "engine/generator/cells.h"
#include "engine/generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

using Turn = SvgWriter::Turn;

bool isUpright(const Site& site)
{
    return site.side == Side::Left || site.side == Side::Right;
}

// The direction of a text that runs along the edge.
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

// The strip between pads and core: the bank's name, or its I/O lanes when one is near enough.
void drawBank(SvgWriter& svg, const Site& site)
{
    const EdgeCell cell{site.side, site.box};
    const double length = isUpright(site) ? site.box.height : site.box.width;
    const std::string number = site.name.substr(4);
    const Turn turn = alongEdge(site);
    {
        const auto layer = svg.layer(LAYER_BASE);
        svg.rect("bank", site.box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, cell.part(0, 32, length, 20), 10, "Bank " + number, turn);

    constexpr double LANE = 100;
    const int lanes = static_cast<int>(length / LANE);
    const double pitch = length / lanes;
    std::vector<Part> parts;
    for (int lane = 0; lane < lanes; ++lane) {
        const std::string name = "Bank " + number + "  lane " + std::to_string(lane);
        parts.push_back({"pad-part", cell.part(lane * pitch + 5, 36, pitch - 10, 12), 4, name, turn});
    }
    drawParts(svg, parts, LAYER_DETAIL_NAMES);
    drawWires(svg, "pad-wire",
        {{cell.point(4, 33.5), cell.point(length - 4, 33.5)}, {cell.point(4, 51), cell.point(length - 4, 51)}});
}

// From the outside: the bond pad, the buffer, the I/O logic.
void drawPad(SvgWriter& svg, const Site& site)
{
    const EdgeCell cell{site.side, site.box};
    const Box metal = cell.part(2.5, 1.5, 10, 10);
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect(padStyle(site), site.box);
    }
    drawName(svg, LAYER_TILE_NAMES, site.box, 5.6, site.name, isUpright(site) ? Turn::None : Turn::Left);
    drawParts(svg, {{"pad-metal", metal, 2.4, site.name}, {"pad-part", cell.part(2, 21, 11, 6), 2.4, "I/O"}},
        LAYER_DETAIL_NAMES);
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.polygon("pad-buffer", {cell.point(4, 14), cell.point(11, 14), cell.point(7.5, 18.5)});
    }
    drawWires(
        svg, "pad-wire", {{cell.point(7.5, 11.5), cell.point(7.5, 14)}, {cell.point(7.5, 18.5), cell.point(7.5, 21)}});
    if (attribute(site, "function") == "clock")
        drawName(svg, LAYER_FINE_NAMES, metal.inner(0, 7.5, 10, 2), 1.2, "CLOCK");
}

void drawSupply(SvgWriter& svg, const Site& site)
{
    const EdgeCell cell{site.side, site.box};
    const Box metal = cell.part(2.5, 1.5, 10, 10);
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("supply", site.box);
    }
    drawName(svg, LAYER_TILE_NAMES, site.box, 5.2, site.name, isUpright(site) ? Turn::None : Turn::Left);
    drawParts(
        svg, {{"supply-part", metal}, {"supply-part", cell.part(2, 16, 11, 10), 2.4, "CLAMP"}}, LAYER_DETAIL_NAMES);
    drawWires(svg, "supply-wire", {{cell.point(7.5, 11.5), cell.point(7.5, 16)}});
    const auto layer = svg.layer(LAYER_DETAIL_NAMES);
    svg.label(metal.inner(0, 1.5, 10, 3.5), 2.6, "VCCIO");
    svg.label(metal.inner(0, 5, 10, 3.5), 2.6, site.name.substr(5));
}

} // namespace mirn::zeldevicegenerator
