// SPDX-License-Identifier: MIT
#pragma once

#include "generator/site.h"
#include "generator/svgwriter.h"

// Functions that draw one site of each kind: body, names, and the details that appear at higher scales. The caller has
// opened the site's element, so that everything they draw carries its id.
namespace mirn::zeldevicegenerator {

void drawBank(SvgWriter& svg, const Site& site);
void drawPad(SvgWriter& svg, const Site& site);
void drawSupply(SvgWriter& svg, const Site& site);

void drawPll(SvgWriter& svg, const Site& site);
void drawSystemBlock(SvgWriter& svg, const Site& site);
void drawConfiguration(SvgWriter& svg, const Site& site);

void drawUnit(SvgWriter& svg, const Site& site);
void drawChannel(SvgWriter& svg, const Site& site);
void drawTransmitPll(SvgWriter& svg, const Site& site);
void drawReference(SvgWriter& svg, const Site& site);

// Defines the details that all logic tiles, block RAMs and DSP blocks share; each site only refers to them.
void defineTiles(SvgWriter& svg);
void drawRegion(SvgWriter& svg, const Site& site);
void drawLogicTile(SvgWriter& svg, const Site& site);
void drawMemory(SvgWriter& svg, const Site& site);
void drawDsp(SvgWriter& svg, const Site& site);
void drawClockHub(SvgWriter& svg, const Site& site);
void drawRowClock(SvgWriter& svg, const Site& site);

// A part of a cell. At middle scales its name is shown at font size `size`. Close up, the name moves into the corner to
// make space for the blocks inside, if there are any.
struct Part
{
    const char* family; // its style is FAMILY-part, that of the blocks inside FAMILY-fine
    Box box;
    double size;
    std::string name;
    std::vector<std::string> inside = {};
    int columns = 1; // number of columns of the blocks inside
    SvgWriter::Turn turn = SvgWriter::Turn::None;
};

void drawParts(SvgWriter& svg, const std::vector<Part>& parts);

// Draws the outline of a site on the given layer.
void drawBody(SvgWriter& svg, int layer, const char* style, const Box& box);

// Draws one label on the given layer.
void drawName(SvgWriter& svg, int layer, const Box& box, double size, const std::string& name,
    SvgWriter::Turn turn = SvgWriter::Turn::None);

// Draws the name at the top of a cell that has details, in two sizes, one of which is shown at a time.
void drawHeader(SvgWriter& svg, const Box& box, double size, const std::string& name);

// Draws horizontal or vertical wires on the detail layer, one per pair of points.
void drawWires(SvgWriter& svg, const char* style, const std::vector<std::pair<Point, Point>>& wires);

} // namespace mirn::zeldevicegenerator
