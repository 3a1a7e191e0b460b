// SPDX-License-Identifier: MIT
#pragma once

#include "engine/generator/site.h"
#include "engine/generator/svgwriter.h"

// How one site of each kind is drawn: body, names, and the details that show at higher scales. The caller has opened
// the site's element, so that everything here carries its id.
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

// The details that all logic tiles, block RAMs and DSP blocks share, to be drawn once and used by each.
void defineTiles(SvgWriter& svg);
void drawRegion(SvgWriter& svg, const Site& site);
void drawLogicTile(SvgWriter& svg, const Site& site);
void drawMemory(SvgWriter& svg, const Site& site);
void drawDsp(SvgWriter& svg, const Site& site);
void drawClockHub(SvgWriter& svg, const Site& site);
void drawRowClock(SvgWriter& svg, const Site& site);

// A part of a cell. Up to the middle scales it shows its name as large as `size`; seen close, the name moves into the
// corner and makes room for the blocks inside, of which there may be none.
struct Part
{
    const char* family; // its style is FAMILY-part, that of what is inside FAMILY-fine
    Box box;
    double size;
    std::string name;
    std::vector<std::string> inside = {};
    int columns = 1; // in which the blocks inside are laid out
    SvgWriter::Turn turn = SvgWriter::Turn::None;
};

void drawParts(SvgWriter& svg, const std::vector<Part>& parts);

// The outline of a site on a layer of its own.
void drawBody(SvgWriter& svg, int layer, const char* style, const Box& box);

// One label on a layer of its own.
void drawName(SvgWriter& svg, int layer, const Box& box, double size, const std::string& name,
    SvgWriter::Turn turn = SvgWriter::Turn::None);

// The name at the top of a cell that has details: in two sizes, of which one is shown at a time.
void drawHeader(SvgWriter& svg, const Box& box, double size, const std::string& name);

// Horizontal or vertical wires on the detail layer, one per pair of points.
void drawWires(SvgWriter& svg, const char* style, const std::vector<std::pair<Point, Point>>& wires);

} // namespace mirn::zeldevicegenerator
