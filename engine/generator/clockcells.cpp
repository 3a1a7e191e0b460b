// SPDX-License-Identifier: MIT
#include "engine/generator/cells.h"
#include "engine/generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

// The loop of a PLL: the forward path in a row, the feedback divider below it.
void drawLoop(SvgWriter& svg, const Box& box)
{
    const double row = 0.08 * box.height + 6;
    const double height = 0.3 * box.height;
    const double feedback = box.height - height - 1.5;
    const double middle = box.y + row + height / 2;
    const double below = box.y + feedback + height / 2;
    drawParts(svg,
        {{"pll-part", box.inner(4, row, 10, height), 3, "PFD"}, {"pll-part", box.inner(17, row, 8, height), 3, "CP"},
            {"pll-part", box.inner(28, row, 10, height), 3, "VCO"},
            {"pll-part", box.inner(41, row, 9, height), 3, "DIV"},
            {"pll-part", box.inner(19, feedback, 16, height), 3, "FBDIV"}},
        LAYER_DETAIL_NAMES);
    drawWires(svg, "pll-wire",
        {{{box.x, middle}, {box.x + 4, middle}}, {{box.x + 14, middle}, {box.x + 17, middle}},
            {{box.x + 25, middle}, {box.x + 28, middle}}, {{box.x + 38, middle}, {box.x + 41, middle}},
            {{box.x + 50, middle}, {box.right(), middle}}, {{box.x + 39.5, middle}, {box.x + 39.5, below}},
            {{box.x + 39.5, below}, {box.x + 35, below}}, {{box.x + 19, below}, {box.x + 9, below}},
            {{box.x + 9, below}, {box.x + 9, box.y + row + height}}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(box.inner(0, row + height / 2 - 1.3, 4, 1.2), 1, "CLKI");
    svg.label(box.inner(50, row + height / 2 - 1.3, 4, 1.2), 1, "CLKO");
}

void drawSelector(SvgWriter& svg, const Box& box, int number)
{
    const std::string name = std::to_string(number);
    drawParts(svg, {{"clock-part", box}, {"clock", box.inner(14, 4.5, 6, 6), 1.2, "FILTER"}}, LAYER_FINE_NAMES);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 0.4, box.width, 3), 2.6, "DCS" + name);
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.polygon("clock-mux",
            {{box.x + 7, box.y + 4}, {box.x + 11, box.y + 5.5}, {box.x + 11, box.y + 9.5}, {box.x + 7, box.y + 11}});
    }
    drawWires(svg, "clock-wire",
        {{{box.x, box.y + 6}, {box.x + 7, box.y + 6}}, {{box.x, box.y + 9}, {box.x + 7, box.y + 9}},
            {{box.x + 11, box.y + 7.5}, {box.x + 14, box.y + 7.5}},
            {{box.x + 20, box.y + 7.5}, {box.right(), box.y + 7.5}},
            {{box.x + 9, box.bottom()}, {box.x + 9, box.y + 10.2}}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(box.inner(1, 4.4, 5, 1.4), 1.2, "CLK0");
    svg.label(box.inner(1, 7.4, 5, 1.4), 1.2, "CLK1");
    svg.label(box.inner(9.3, 11, 4, 1.4), 1.2, "SEL");
    svg.label(box.inner(20.5, 5.9, 6, 1.4), 1.2, "PCLK" + name);
}

} // namespace

void drawPll(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("pll", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 9, site.name);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 5), 4, site.name);
    drawLoop(svg, box);
}

void drawTransmitPll(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("pll", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 9, "TXPLL");
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 6), 4, site.name);
    drawParts(svg,
        {{"pll-part", box.inner(5, 10, 17, 11), 3.6, "PFD"}, {"pll-part", box.inner(28, 10, 17, 11), 3.6, "CP"},
            {"pll-part", box.inner(28, 27, 17, 11), 3.6, "VCO"}, {"pll-part", box.inner(5, 27, 17, 11), 3.6, "DIV"},
            {"pll-part", box.inner(28, 43, 17, 11), 3.6, "TX CLK"},
            {"pll-part", box.inner(5, 43, 17, 11), 3.6, "LOCK"}},
        LAYER_DETAIL_NAMES);
    drawWires(svg, "pll-wire",
        {{{box.x + 22, box.y + 15.5}, {box.x + 28, box.y + 15.5}},
            {{box.x + 36.5, box.y + 21}, {box.x + 36.5, box.y + 27}},
            {{box.x + 28, box.y + 32.5}, {box.x + 22, box.y + 32.5}},
            {{box.x + 13.5, box.y + 27}, {box.x + 13.5, box.y + 21}},
            {{box.x + 36.5, box.y + 38}, {box.x + 36.5, box.y + 43}},
            {{box.x + 13.5, box.y + 38}, {box.x + 13.5, box.y + 43}}});
}

// Two pads, the receiver, and its termination.
void drawReference(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("reference", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 9, site.name);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 6), 4, site.name);
    drawParts(svg,
        {{"reference-part", box.inner(6, 40, 16, 11), 3.6, "REFP"},
            {"reference-part", box.inner(34, 40, 16, 11), 3.6, "REFN"},
            {"reference-part", box.inner(17, 29, 22, 7), 3.6, "TERM"},
            {"reference-part", box.inner(36, 12, 14, 9), 3.6, "DIV"}},
        LAYER_DETAIL_NAMES);
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.polygon("reference-buffer", {{box.x + 20, box.y + 24}, {box.x + 36, box.y + 24}, {box.x + 28, box.y + 12}});
    }
    drawWires(svg, "reference-wire",
        {{{box.x + 14, box.y + 40}, {box.x + 14, box.y + 26.5}},
            {{box.x + 14, box.y + 26.5}, {box.x + 24, box.y + 26.5}},
            {{box.x + 24, box.y + 26.5}, {box.x + 24, box.y + 24}},
            {{box.x + 42, box.y + 40}, {box.x + 42, box.y + 26.5}},
            {{box.x + 42, box.y + 26.5}, {box.x + 32, box.y + 26.5}},
            {{box.x + 32, box.y + 26.5}, {box.x + 32, box.y + 24}},
            {{box.x + 14, box.y + 32.5}, {box.x + 17, box.y + 32.5}},
            {{box.x + 39, box.y + 32.5}, {box.x + 42, box.y + 32.5}},
            {{box.x + 28, box.y + 12}, {box.x + 28, box.y + 10}}, {{box.x + 28, box.y + 10}, {box.x + 43, box.y + 10}},
            {{box.x + 43, box.y + 10}, {box.x + 43, box.y + 12}}});
}

// Four selectors side by side: two inputs, the multiplexer, the glitch filter, and the clock that it drives.
void drawClockHub(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("clock", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 9, "CLOCK HUB");
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 5), 3.6, "CLOCK HUB");
    for (int number = 0; number < 4; ++number)
        drawSelector(svg, box.inner(3 + number * 29, 6, 27, 13), number);
}

} // namespace mirn::zeldevicegenerator
