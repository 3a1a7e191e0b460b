// SPDX-License-Identifier: MIT
#include "engine/generator/cells.h"

#include "engine/generator/layers.h"

namespace mirn::zeldevicegenerator {

void drawParts(SvgWriter& svg, const std::vector<Part>& parts, int nameLayer)
{
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        for (const Part& part : parts)
            svg.rect(part.style, part.box);
    }
    const auto layer = svg.layer(nameLayer);
    for (const Part& part : parts) {
        if (!part.name.empty())
            svg.label(part.box, part.size, part.name, part.turn);
    }
}

void drawName(SvgWriter& svg, int layer, const Box& box, double size, const std::string& name, SvgWriter::Turn turn)
{
    const auto scope = svg.layer(layer);
    svg.label(box, size, name, turn);
}

void drawWires(SvgWriter& svg, const char* style, const std::vector<std::pair<Point, Point>>& wires)
{
    const auto layer = svg.layer(LAYER_DETAIL);
    for (const auto& [from, to] : wires)
        svg.line(style, from, to);
}

} // namespace mirn::zeldevicegenerator
