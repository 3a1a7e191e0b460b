// SPDX-License-Identifier: MIT
#include "generator/cells.h"

#include "generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

constexpr double CloseSize = 1.2; // font size of names that are read close up
constexpr double CloseHeader = 1.6;
constexpr double Corner = 2; // height of the strip that a name in the corner occupies
constexpr double Gap = 0.5; // around the blocks inside a part

// Draws a label in the upper left corner of a box.
void drawCornerName(SvgWriter& svg, const Box& box, const std::string& name)
{
    svg.label(box.inner(Gap, Gap, textWidth(name) * CloseSize, CloseSize), CloseSize, name);
}

void drawInside(SvgWriter& svg, const Part& part)
{
    drawCornerName(svg, part.box, part.name);
    if (part.inside.empty())
        return;
    const int columns = part.columns;
    const int rows = (static_cast<int>(part.inside.size()) + columns - 1) / columns;
    const double width = (part.box.width - Gap) / columns;
    const double height = (part.box.height - Corner - Gap) / rows;
    const std::string style = std::string(part.family) + "-fine";
    for (std::size_t i = 0; i < part.inside.size(); ++i) {
        const int column = static_cast<int>(i) % columns;
        const int row = static_cast<int>(i) / columns;
        const Box place = part.box.inner(Gap + column * width, Corner + row * height, width - Gap, height - Gap);
        svg.rect(style.c_str(), place);
        svg.label(place, CloseSize, part.inside[i]);
    }
}

} // namespace

void drawParts(SvgWriter& svg, const std::vector<Part>& parts)
{
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        for (const Part& part : parts)
            svg.rect((std::string(part.family) + "-part").c_str(), part.box);
    }
    {
        const auto layer = svg.layer(LAYER_DETAIL_NAMES);
        for (const Part& part : parts)
            svg.label(part.box, part.size, part.name, part.turn);
    }
    const auto layer = svg.layer(LAYER_CLOSE_UP);
    for (const Part& part : parts)
        drawInside(svg, part);
}

void drawBody(SvgWriter& svg, int layer, const char* style, const Box& box)
{
    const auto scope = svg.layer(layer);
    svg.rect(style, box);
}

void drawName(SvgWriter& svg, int layer, const Box& box, double size, const std::string& name, SvgWriter::Turn turn)
{
    const auto scope = svg.layer(layer);
    svg.label(box, size, name, turn);
}

void drawHeader(SvgWriter& svg, const Box& box, double size, const std::string& name)
{
    drawName(svg, LAYER_DETAIL_NAMES, box, size, name);
    drawName(svg, LAYER_CLOSE_UP, box, CloseHeader, name);
}

void drawWires(SvgWriter& svg, const char* style, const std::vector<std::pair<Point, Point>>& wires)
{
    const auto layer = svg.layer(LAYER_DETAIL);
    for (const auto& [from, to] : wires)
        svg.line(style, from, to);
}

} // namespace mirn::zeldevicegenerator
