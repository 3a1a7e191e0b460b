// SPDX-License-Identifier: MIT
#include "generator/sampledrawing.h"

#include "generator/cells.h"
#include "generator/haldenfloorplan.h"
#include "generator/layers.h"
#include "generator/palette.h"

#include <map>

namespace mirn::zeldevicegenerator {

namespace {

using DrawSite = void (*)(SvgWriter&, const Site&);

DrawSite drawerOf(const std::string& kind)
{
    static const std::map<std::string, DrawSite> drawers = {
        {"REGION", drawRegion},
        {"BANK", drawBank},
        {"PAD", drawPad},
        {"VCCIO", drawSupply},
        {"PLL", drawPll},
        {"SYSTEM", drawSystemBlock},
        {"CONFIG", drawConfiguration},
        {"DCU", drawUnit},
        {"CHANNEL", drawChannel},
        {"TXPLL", drawTransmitPll},
        {"EXTREF", drawReference},
        {"PFU", drawLogicTile},
        {"EBR", drawMemory},
        {"DSP", drawDsp},
        {"CLOCK", drawClockHub},
        {"ROWCLOCK", drawRowClock},
    };
    return drawers.at(kind);
}

// Draws lines and not a rectangle, because the rubber band selects every element that it touches, and it would always
// touch a rectangle as large as the die.
void drawOutline(SvgWriter& svg, const char* style, const Box& box)
{
    const Point corners[] = {{box.x, box.y}, {box.right(), box.y}, {box.right(), box.bottom()}, {box.x, box.bottom()}};
    for (int side = 0; side < 4; ++side)
        svg.line(style, corners[side], corners[(side + 1) % 4]);
}

void drawGround(SvgWriter& svg)
{
    constexpr double Tracks = 4;
    const auto layer = svg.layer(LAYER_BASE);
    drawOutline(svg, "die", halden::Die);
    const Box& across = halden::HorizontalSpine;
    const Box& down = halden::VerticalSpine;
    svg.rect("spine", across);
    svg.rect("spine", down);
    for (int track = 0; track < Tracks; ++track) {
        const double offset = 3.5 + 3 * track;
        svg.line("clock-wire", {across.x, across.y + offset}, {across.right(), across.y + offset});
        svg.line("clock-wire", {down.x + offset, down.y}, {down.x + offset, down.bottom()});
    }
}

} // namespace

SampleDrawing sampleDrawing(const std::vector<Site>& sites)
{
    SvgWriter svg(halden::Width, halden::Height, halden::DEVICE_NAME, STYLE_SHEET);
    {
        const auto definitions = svg.definitions();
        defineTiles(svg);
    }
    drawGround(svg);
    for (const Site& site : sites) {
        const auto element = svg.element(site.id, site.popup);
        drawerOf(site.kind)(svg, site);
    }
    return {svg.finish(), svg.misfits()};
}

} // namespace mirn::zeldevicegenerator
