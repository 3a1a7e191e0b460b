// SPDX-License-Identifier: MIT
#include "engine/generator/cells.h"
#include "engine/generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

using Turn = SvgWriter::Turn;

constexpr double LOGIC_HEADER = 3.6; // strip with the tile's name
constexpr int SLICES = 4;
constexpr double SLICE_PITCH = 6;

void defineLogic(SvgWriter& svg)
{
    const auto definition = svg.definition("logic");
    std::vector<Part> frames{{"switch", {1, LOGIC_HEADER, 6, 23.4}, 1.2, "SWITCH"}};
    std::vector<Part> parts;
    std::vector<std::pair<Point, Point>> wires;
    for (int slice = 0; slice < SLICES; ++slice) {
        const Box box{8.4, LOGIC_HEADER + slice * SLICE_PITCH, 17.6, 5.4};
        frames.push_back({"slice", box});
        parts.push_back({"lut", box.inner(1.2, 1.8, 9, 3), 1.2, "2 x LUT4"});
        parts.push_back({"register", box.inner(10.2, 1.8, 6.2, 3), 1.2, "2 x REG"});
        wires.push_back({{7, box.y + 3.3}, {box.x + 1.2, box.y + 3.3}});
    }
    drawParts(svg, frames, LAYER_FINE_NAMES);
    drawParts(svg, parts, LAYER_FINE_NAMES);
    drawWires(svg, "logic-wire", wires);
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    for (int slice = 0; slice < SLICES; ++slice)
        svg.label({9.4, LOGIC_HEADER + slice * SLICE_PITCH + 0.3, 5, 1.3}, 1,
            std::string("SLICE ") + static_cast<char>('A' + slice));
}

// Two halves of the cell array with the sense amplifiers between them, and a port on each side.
void defineMemory(SvgWriter& svg)
{
    const auto definition = svg.definition("memory");
    drawParts(svg,
        {{"memory-part", {2, 6, 8, 50}, 3.4, "PORT A", Turn::Left},
            {"memory-part", {36, 6, 8, 50}, 3.4, "PORT B", Turn::Left}, {"memory-array", {12, 6, 22, 17}},
            {"memory-part", {12, 24, 22, 6}, 3.4, "18 Kbit"}, {"memory-array", {12, 31, 22, 17}},
            {"memory-part", {12, 49, 22, 7}, 3.4, "ECC"}},
        LAYER_DETAIL_NAMES);
    std::vector<std::pair<Point, Point>> wires;
    for (double top : {6.0, 31.0}) {
        for (int line = 1; line < 4; ++line)
            wires.push_back({{12, top + line * 17 / 4.0}, {34, top + line * 17 / 4.0}});
        for (int line = 1; line < 4; ++line)
            wires.push_back({{12 + line * 5.5, top}, {12 + line * 5.5, top + 17}});
    }
    drawWires(svg, "memory-wire", wires);
}

void defineDsp(SvgWriter& svg)
{
    const auto definition = svg.definition("dsp");
    drawParts(svg,
        {{"dsp-part", {3, 6.5, 18, 7}, 3, "PREADD"}, {"dsp-part", {25, 6.5, 18, 7}, 3, "PREADD"},
            {"dsp-part", {3, 16.5, 18, 13}, 3, "18 x 18"}, {"dsp-part", {25, 16.5, 18, 13}, 3, "18 x 18"},
            {"dsp-part", {3, 33.5, 40, 12}, 3.4, "ALU 54"}, {"dsp-part", {3, 49, 40, 6.5}, 3, "OUTPUT REGISTERS"}},
        LAYER_DETAIL_NAMES);
    drawWires(svg, "dsp-wire",
        {{{12, 13.5}, {12, 16.5}}, {{34, 13.5}, {34, 16.5}}, {{12, 29.5}, {12, 33.5}}, {{34, 29.5}, {34, 33.5}},
            {{23, 45.5}, {23, 49}}});
}

void drawMacro(SvgWriter& svg, const Site& site, const char* style, const char* definition, const char* shortName)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect(style, box);
    }
    drawName(svg, LAYER_SHORT_NAMES, box, 9, shortName);
    drawName(svg, LAYER_TILE_NAMES, box, 6, site.name);
    svg.use(definition, {box.x, box.y});
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 0.8, box.width, 4.6), 3.4, site.name);
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
    const auto layer = svg.layer(LAYER_BASE);
    svg.rect("region", site.box);
}

void drawLogicTile(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("logic", box);
    }
    drawName(svg, LAYER_TILE_NAMES, box, 5.6, site.name);
    svg.use("logic", {box.x, box.y});
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 0.4, box.width, 3), 2.4, site.name);
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
