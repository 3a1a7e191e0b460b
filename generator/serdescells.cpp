// SPDX-License-Identifier: MIT
#include "generator/cells.h"
#include "generator/haldenfloorplan.h"
#include "generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

constexpr double LaneWidth = 27; // width of the receive or transmit half of a channel
constexpr int ParallelBits = 8;

// Draws the coding sublayer of one direction: a frame with its name and four blocks.
void drawCodingBlock(SvgWriter& svg, const Box& box, const std::string& name, const std::vector<std::string>& blocks)
{
    drawBody(svg, LAYER_DETAIL, "channel-part", box);
    drawHeader(svg, box.inner(0, 1, box.width, 4), 3.4, name);
    std::vector<Box> places;
    for (int i = 0; i < 4; ++i)
        places.push_back(box.inner(1.5 + (i % 2) * 12.5, 6 + i / 2 * 12, 11.5, 10.5));
    {
        const auto layer = svg.layer(LAYER_DETAIL);
        for (const Box& place : places)
            svg.rect("channel-fine", place);
    }
    const auto layer = svg.layer(LAYER_HEADERS);
    for (std::size_t i = 0; i < places.size(); ++i)
        svg.label(places[i], 2.2, blocks[i]);
}

// Draws the parallel data pins above a coding block.
void drawBits(SvgWriter& svg, const Box& box, const char* prefix)
{
    const double pitch = box.width / ParallelBits;
    const auto layer = svg.layer(LAYER_PIN_NAMES);
    for (int bit = 0; bit < ParallelBits; ++bit) {
        const Box place = box.inner(bit * pitch, 0, pitch, box.height);
        svg.label(place.inner(0, 0, pitch, 1), 0.8, prefix + std::to_string(bit));
        svg.line("channel-wire", {place.centerX(), place.y + 1.1}, {place.centerX(), place.bottom()});
    }
}

void drawLane(SvgWriter& svg, const Box& lane, const std::vector<Part>& parts)
{
    drawParts(svg, parts);
    const double x = lane.centerX();
    drawWires(svg, "channel-wire",
        {{{x, lane.y + 38}, {x, lane.y + 41}}, {{x, lane.y + 52}, {x, lane.y + 54}},
            {{x, lane.y + 65}, {x, lane.y + 67}}, {{x - 6.75, lane.y + 75}, {x - 6.75, lane.y + 77}},
            {{x + 6.75, lane.y + 75}, {x + 6.75, lane.y + 77}}});
}

} // namespace

void drawUnit(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    const Box header = box.inner(0, 0, box.width, halden::UnitHeader);
    const Box auxiliary = box.inner(69, 78, 50, 30);
    drawBody(svg, LAYER_BASE, "unit", box);
    drawBody(svg, LAYER_BASE, "unit-part", auxiliary);
    drawName(svg, LAYER_BLOCK_NAMES, header, 13, site.name);
    drawName(svg, LAYER_BLOCK_NAMES, auxiliary, 13, "AUX");
    drawHeader(svg, header, 6, site.name + " dual-channel unit");
    drawHeader(svg, auxiliary.inner(0, 1, 50, 6), 4, "AUX");
    drawParts(svg,
        {{"unit", auxiliary.inner(5, 9, 18, 8), 3.4, "BIAS", {"BANDGAP", "MIRROR"}, 2},
            {"unit", auxiliary.inner(27, 9, 18, 8), 3.4, "RESCAL", {"DAC", "COMP"}, 2},
            {"unit", auxiliary.inner(5, 20, 18, 8), 3.4, "SCI", {"DECODE", "REGS"}, 2},
            {"unit", auxiliary.inner(27, 20, 18, 8), 3.4, "RESET", {"SEQUENCER"}, 1}});
}

// Data enter and leave through the pads at the bottom; the receive lane is on the left.
void drawChannel(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "channel", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 16, site.name.substr(site.name.find('_') + 1));
    drawHeader(svg, box.inner(0, 0.5, box.width, 5), 4, site.name);

    const Box receive = box.inner(3, 0, LaneWidth, box.height);
    const Box transmit = box.inner(32, 0, LaneWidth, box.height);
    drawCodingBlock(svg, receive.inner(0, 8, LaneWidth, 30), "RX PCS", {"FIFO", "CTC", "ALIGN", "8B10B"});
    drawCodingBlock(svg, transmit.inner(0, 8, LaneWidth, 30), "TX PCS", {"FIFO", "8B10B", "PRBS", "POLAR"});
    drawBits(svg, receive.inner(0, 5.6, LaneWidth, 2.4), "RD");
    drawBits(svg, transmit.inner(0, 5.6, LaneWidth, 2.4), "TD");
    drawLane(svg, receive,
        {{"channel", receive.inner(0, 41, 27, 11), 3.6, "DES", {"SAMPLER", "DEMUX", "CLOCK"}, 3},
            {"channel", receive.inner(0, 54, 27, 11), 3.6, "CDR", {"PHASE", "FILTER", "ROTATOR"}, 3},
            {"channel", receive.inner(0, 67, 27, 8), 3.6, "EQ", {"CTLE", "DFE"}, 2},
            {"channel", receive.inner(0, 77, 13, 11), 3, "RXP", {"BOND PAD"}, 1},
            {"channel", receive.inner(14, 77, 13, 11), 3, "RXN", {"BOND PAD"}, 1}});
    drawLane(svg, transmit,
        {{"channel", transmit.inner(0, 41, 27, 11), 3.6, "SER", {"MUX", "RETIME", "CLOCK"}, 3},
            {"channel", transmit.inner(0, 54, 27, 11), 3.6, "EMPH", {"PRE", "MAIN", "POST"}, 3},
            {"channel", transmit.inner(0, 67, 27, 8), 3.6, "DRIVER", {"SEG 0", "SEG 1", "SEG 2", "SEG 3"}, 4},
            {"channel", transmit.inner(0, 77, 13, 11), 3, "TXP", {"BOND PAD"}, 1},
            {"channel", transmit.inner(14, 77, 13, 11), 3, "TXN", {"BOND PAD"}, 1}});
}

void drawSystemBlock(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "system", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 13, site.name);
    drawHeader(svg, box.inner(0, 1, box.width, 6), 4, site.name);
    const Box left = box.inner(5, 10, 20, 21);
    const Box right = box.inner(30, 10, 19, 21);
    if (site.name == "OSC")
        drawParts(svg,
            {{"system", left, 3.4, "RING", {"STAGE 0", "STAGE 1", "STAGE 2"}, 1},
                {"system", right, 3.4, "DIV", {"2", "4", "8", "16"}, 2}});
    else
        drawParts(svg,
            {{"system", left, 3.4, "SENSOR", {"DIODE", "BIAS"}, 1},
                {"system", right, 3.4, "ADC", {"SAMPLE", "COMPARE", "REGISTER"}, 1}});
    drawWires(svg, "system-wire", {{{box.x + 25, box.y + 20}, {box.x + 30, box.y + 20}}});
}

void drawConfiguration(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    drawBody(svg, LAYER_SITES, "system", box);
    drawName(svg, LAYER_BLOCK_NAMES, box, 13, site.name);
    drawHeader(svg, box.inner(0, 2, box.width, 7), 5, site.name);
    drawParts(svg,
        {{"system", box.inner(4, 14, 28.5, 34), 4.4, "JTAG", {"TAP", "IR", "BYPASS", "DR"}, 2},
            {"system", box.inner(34.5, 14, 28.5, 34), 4.4, "SPI", {"SHIFT", "CLOCK", "COMMAND", "FIFO"}, 2},
            {"system", box.inner(65, 14, 28.5, 34), 4.4, "SED", {"CRC", "COMPARE", "SCRUB", "FLAGS"}, 2},
            {"system", box.inner(95.5, 14, 28.5, 34), 4.4, "DECRYPT", {"KEY", "ROUND", "S-BOX", "FIFO"}, 2}});
}

} // namespace mirn::zeldevicegenerator
