// SPDX-License-Identifier: MIT
#include "generator/cells.h"
#include "generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

// Draws the loop of a PLL: the forward path in a row, the feedback divider below it.
void drawLoop(SvgWriter& svg, const Box& box)
{
    const double row = 0.08 * box.height + 5;
    const double height = 0.33 * box.height;
    const double feedback = box.height - height - 1;
    const double middle = box.y + row + height / 2;
    const double below = box.y + feedback + height / 2;
    drawParts(svg,
        {{"pll", box.inner(4, row, 10, height), 3, "PFD", {"UP", "DOWN"}, 2},
            {"pll", box.inner(17, row, 9, height), 3, "CP", {"I+", "I-"}, 2},
            {"pll", box.inner(29, row, 9, height), 3, "VCO", {"RING"}, 1},
            {"pll", box.inner(41, row, 9, height), 3, "DIV", {"P", "S"}, 2},
            {"pll", box.inner(18, feedback, 18, height), 3, "FBDIV", {"N", "FRAC"}, 2}});
    drawWires(svg, "pll-wire",
        {{{box.x, middle}, {box.x + 4, middle}}, {{box.x + 14, middle}, {box.x + 17, middle}},
            {{box.x + 26, middle}, {box.x + 29, middle}}, {{box.x + 38, middle}, {box.x + 41, middle}},
            {{box.x + 50, middle}, {box.right(), middle}}, {{box.x + 39.5, middle}, {box.x + 39.5, below}},
            {{box.x + 39.5, below}, {box.x + 36, below}}, {{box.x + 18, below}, {box.x + 9, below}},
            {{box.x + 9, below}, {box.x + 9, box.y + row + height}}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(box.inner(0, row + height / 2 - 1.4, 4, 1.2), 1, "CLKI");
    svg.label(box.inner(50, row + height / 2 - 1.4, 4, 1.2), 1, "CLKO");
    svg.label(box.inner(10, feedback + height / 2 - 1.4, 6, 1.2), 1, "CLKFB");
}

// Draws one selector of the clock hub, in a box of 27 x 13.
void drawSelector(SvgWriter& svg, const Box& box, int number)
{
    const std::string name = std::to_string(number);
    drawBody(svg, LAYER_DETAIL, "clock-part", box);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 0.4, box.width, 3), 2.6, "DCS" + name);
    drawName(svg, LAYER_CLOSE_UP, box.inner(0, 0.4, box.width, 2), 1.6, "DCS" + name + " clock select");
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.polygon("clock-mux",
            {{box.x + 6, box.y + 3.5}, {box.x + 9, box.y + 4.7}, {box.x + 9, box.y + 9.3}, {box.x + 6, box.y + 10.5}});
        svg.rect("clock-fine", box.inner(11, 4.5, 5, 5));
        svg.rect("clock-fine", box.inner(18, 4.5, 4, 5));
    }
    drawWires(svg, "clock-wire",
        {{{box.x, box.y + 5}, {box.x + 6, box.y + 5}}, {{box.x, box.y + 7}, {box.x + 6, box.y + 7}},
            {{box.x, box.y + 9}, {box.x + 6, box.y + 9}}, {{box.x + 9, box.y + 7}, {box.x + 11, box.y + 7}},
            {{box.x + 16, box.y + 7}, {box.x + 18, box.y + 7}}, {{box.x + 22, box.y + 7}, {box.right(), box.y + 7}},
            {{box.x + 7.5, box.bottom()}, {box.x + 7.5, box.y + 9.9}}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(box.inner(11, 4.5, 5, 5), 1, "FILTER");
    svg.label(box.inner(18, 4.5, 4, 5), 1, "GATE");
    svg.label(box.inner(1, 3.8, 4, 1.1), 1, "CLK0");
    svg.label(box.inner(1, 5.8, 4, 1.1), 1, "CLK1");
    svg.label(box.inner(1, 7.8, 4, 1.1), 1, "CLK2");
    svg.label(box.inner(7.8, 11, 3, 1.1), 1, "SEL");
    svg.label(box.inner(22.2, 5.7, 4.6, 1.2), 1, "PCLK" + name);
}

} // namespace

void drawPll(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "pll", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 13, site.name.substr(site.name.find('_') + 1));
    drawHeader(svg, box.inner(0, 1, box.width, 5), 4, site.name);
    drawLoop(svg, box);
}

void drawTransmitPll(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "pll", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 13, "TXPLL");
    drawHeader(svg, box.inner(0, 1, box.width, 6), 4, site.name);
    drawParts(svg,
        {{"pll", box.inner(5, 10, 17, 11), 3.6, "PFD", {"UP", "DOWN"}, 2},
            {"pll", box.inner(28, 10, 17, 11), 3.6, "CP", {"I+", "I-", "FILTER"}, 3},
            {"pll", box.inner(28, 27, 17, 11), 3.6, "VCO", {"TANK", "BUFFER"}, 2},
            {"pll", box.inner(5, 27, 17, 11), 3.6, "DIV", {"X8", "X10", "X16", "X20"}, 2},
            {"pll", box.inner(28, 43, 17, 11), 3.6, "TX CLK", {"CH0", "CH1"}, 2},
            {"pll", box.inner(5, 43, 17, 11), 3.6, "LOCK", {"COUNTER"}, 1}});
    drawWires(svg, "pll-wire",
        {{{box.x + 22, box.y + 15.5}, {box.x + 28, box.y + 15.5}},
            {{box.x + 36.5, box.y + 21}, {box.x + 36.5, box.y + 27}},
            {{box.x + 28, box.y + 32.5}, {box.x + 22, box.y + 32.5}},
            {{box.x + 13.5, box.y + 27}, {box.x + 13.5, box.y + 21}},
            {{box.x + 36.5, box.y + 38}, {box.x + 36.5, box.y + 43}},
            {{box.x + 13.5, box.y + 38}, {box.x + 13.5, box.y + 43}}});
}

// Draws two pads, the receiver and its termination.
void drawReference(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "reference", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 13, site.name.substr(3)); // without EXT
    drawHeader(svg, box.inner(0, 1, box.width, 6), 4, site.name);
    drawParts(svg,
        {{"reference", box.inner(6, 40, 16, 11), 3.6, "REFP", {"BOND PAD"}, 1},
            {"reference", box.inner(34, 40, 16, 11), 3.6, "REFN", {"BOND PAD"}, 1},
            {"reference", box.inner(17, 29, 22, 7), 3.6, "TERM", {"50 OHM", "50 OHM"}, 2},
            {"reference", box.inner(36, 12, 14, 9), 3.6, "DIV", {"1", "2"}, 2}});
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

// Draws four selectors side by side, each with its inputs, the multiplexer, the glitch filter and the clock that it
// drives.
void drawClockHub(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "clock", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 12, "CLOCK HUB");
    drawHeader(svg, box.inner(0, 1, box.width, 5), 3.6, "CLOCK HUB");
    for (int number = 0; number < 4; ++number)
        drawSelector(svg, box.inner(3 + number * 29, 6, 27, 13), number);
}

// Draws a driver that taps the spine and drives the tiles on both sides.
void drawRowClock(SvgWriter& svg, const Site& site)
{
    constexpr double Reach = 11; // drawing units from the driver to the tiles
    const Box& box = site.box;
    const double middle = box.y + 8.25;
    drawBody(svg, LAYER_SITES, "clock", box);
    drawName(svg, LAYER_HEADERS, box.inner(0, 0.8, box.width, 3), 2.4, site.name);
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        svg.rect("clock-part", box.inner(1, 4.5, 5.5, 7.5));
        svg.rect("clock-part", box.inner(7.5, 4.5, 5.5, 7.5));
    }
    drawWires(svg, "clock-wire",
        {{{box.x - Reach, middle}, {box.x + 1, middle}}, {{box.x + 6.5, middle}, {box.x + 7.5, middle}},
            {{box.x + 13, middle}, {box.right() + Reach, middle}}});
    const auto layer = svg.layer(LAYER_FINE_NAMES);
    svg.label(box.inner(1, 4.5, 5.5, 7.5), 1.2, "LEFT");
    svg.label(box.inner(7.5, 4.5, 5.5, 7.5), 1.2, "RIGHT");
}

} // namespace mirn::zeldevicegenerator
