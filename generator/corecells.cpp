// SPDX-License-Identifier: MIT
#include "generator/cells.h"
#include "generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

using Turn = SvgWriter::Turn;

constexpr double LogicHeader = 3.6; // height of the strip with the tile's name
constexpr int Slices = 4;
constexpr double SlicePitch = 6.75;

// Defines the switch box on the left and four slices, each with its look-up tables and registers.
void defineLogic(SvgWriter& svg)
{
    const auto definition = svg.definition("logic");
    const Box switchBox{1, LogicHeader, 6, 26.4};
    std::vector<Box> slices;
    for (int slice = 0; slice < Slices; ++slice)
        slices.push_back({9, LogicHeader + slice * SlicePitch, 19, 6.15});
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.rect("switch", switchBox);
        for (const Box& slice : slices) {
            svg.rect("slice", slice);
            svg.rect("lut", slice.inner(1.2, 2, 10, 3.4));
            svg.rect("register", slice.inner(11.2, 2, 6.6, 3.4));
            svg.line("logic-wire", {switchBox.right(), slice.y + 3.7}, {slice.x + 1.2, slice.y + 3.7});
        }
    }
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(switchBox, 1.2, "SWITCH");
    char letter = 'A';
    for (const Box& slice : slices) {
        svg.label(slice.inner(1, 0.4, 5, 1.3), 1, std::string("SLICE ") + letter++);
        svg.label(slice.inner(1.2, 2, 10, 3.4), 1.2, "2 x LUT4");
        svg.label(slice.inner(11.2, 2, 6.6, 3.4), 1.2, "2 x REG");
    }
}

// Draws one half of the cell array of a block RAM with its word and bit lines.
void drawArray(SvgWriter& svg, const Box& box)
{
    constexpr int Lines = 4;
    drawBody(svg, LAYER_DETAIL, "memory-array", box);
    std::vector<std::pair<Point, Point>> wires;
    for (int line = 1; line < Lines; ++line) {
        const double x = box.x + line * box.width / Lines;
        const double y = box.y + line * box.height / Lines;
        wires.push_back({{box.x, y}, {box.right(), y}});
        wires.push_back({{x, box.y}, {x, box.bottom()}});
    }
    drawWires(svg, "memory-wire", wires);
}

void defineMemory(SvgWriter& svg)
{
    const auto definition = svg.definition("memory");
    drawParts(svg,
        {{"memory", {2, 7, 8, 87}, 3.4, "PORT A", {"ADDR", "DIN", "DOUT", "WE", "CLK"}, 1, Turn::Left},
            {"memory", {38, 7, 8, 87}, 3.4, "PORT B", {"ADDR", "DIN", "DOUT", "WE", "CLK"}, 1, Turn::Left},
            {"memory", {12, 42, 24, 8}, 3.4, "18 Kbit"},
            {"memory", {12, 86, 24, 8}, 3.4, "ECC", {"ENCODE", "CORRECT"}, 2}});
    drawArray(svg, {12, 7, 24, 34});
    drawArray(svg, {12, 51, 24, 34});
}

void defineDsp(SvgWriter& svg)
{
    const auto definition = svg.definition("dsp");
    drawParts(svg,
        {{"dsp", {3, 7, 19, 9}, 3, "PREADD", {"A", "D"}, 2}, {"dsp", {26, 7, 19, 9}, 3, "PREADD", {"A", "D"}, 2},
            {"dsp", {3, 20, 19, 27}, 3, "18 x 18", {"BOOTH", "TREE", "ROUND"}, 1},
            {"dsp", {26, 20, 19, 27}, 3, "18 x 18", {"BOOTH", "TREE", "ROUND"}, 1},
            {"dsp", {3, 52, 42, 22}, 3.6, "ALU 54", {"ADD", "LOGIC", "SHIFT", "MATCH", "CARRY", "FLAGS"}, 3},
            {"dsp", {3, 79, 42, 14}, 3, "OUTPUT REGISTERS", {"P0", "P1", "P2", "CASCADE"}, 4}});
    drawWires(svg, "dsp-wire",
        {{{12.5, 16}, {12.5, 20}}, {{35.5, 16}, {35.5, 20}}, {{12.5, 47}, {12.5, 52}}, {{35.5, 47}, {35.5, 52}},
            {{24, 74}, {24, 79}}});
}

void drawMacro(SvgWriter& svg, const Site& site, const char* style, const char* definition, const char* shortName)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, style, box);
    drawName(svg, LAYER_SHORT_NAMES, box, 14, shortName);
    drawName(svg, LAYER_TILE_NAMES, box, 6, site.name);
    svg.use(definition, {box.x, box.y});
    drawHeader(svg, box.inner(0, 1, box.width, 5), 3.4, site.name);
}

} // namespace

void defineTiles(SvgWriter& svg)
{
    defineLogic(svg);
    defineMemory(svg);
    defineDsp(svg);
}

void drawRegion(SvgWriter& svg, const Site& site)
{
    drawBody(svg, LAYER_BASE, "region", site.box);
}

void drawLogicTile(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "logic", box);
    drawName(svg, LAYER_TILE_NAMES, box, 5.6, site.name);
    svg.use("logic", {box.x, box.y});
    drawName(svg, LAYER_HEADERS, box.inner(0, 0.4, box.width, 3), 2.4, site.name);
}

void drawMemory(SvgWriter& svg, const Site& site)
{
    drawMacro(svg, site, "memory", "memory", "EBR");
}

void drawDsp(SvgWriter& svg, const Site& site)
{
    drawMacro(svg, site, "dsp", "dsp", "DSP");
}

} // namespace mirn::zeldevicegenerator
