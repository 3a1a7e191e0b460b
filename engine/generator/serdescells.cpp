// SPDX-License-Identifier: MIT
#include "engine/generator/cells.h"
#include "engine/generator/haldenfloorplan.h"
#include "engine/generator/layers.h"

namespace mirn::zeldevicegenerator {

namespace {

using Turn = SvgWriter::Turn;

constexpr double LANE_WIDTH = 27; // receive or transmit half of a channel
constexpr int PARALLEL_BITS = 10;

// The coding sublayer of one direction: a frame with its name and four blocks.
void drawCodingBlock(SvgWriter& svg, const Box& box, const std::string& name, const std::vector<std::string>& blocks)
{
    drawParts(svg, {{"channel-part", box}}, LAYER_DETAIL_NAMES);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 4), 3.4, name);
    std::vector<Part> parts;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Box place = box.inner(1.5 + (i % 2) * 12.5, 6 + static_cast<double>(i / 2) * 12, 11.5, 10.5);
        parts.push_back({"channel-fine", place, 2.2, blocks[i]});
    }
    drawParts(svg, parts, LAYER_FINE_NAMES);
}

// The parallel data pins above a coding block.
void drawBits(SvgWriter& svg, const Box& box, const char* prefix)
{
    std::vector<std::pair<Point, Point>> wires;
    const double pitch = box.width / PARALLEL_BITS;
    const auto layer = svg.layer(LAYER_PIN_NAMES);
    for (int bit = 0; bit < PARALLEL_BITS; ++bit) {
        const Box place = box.inner(bit * pitch, 0, pitch, box.height);
        svg.label(place.inner(0, 0, pitch, 1), 0.8, prefix + std::to_string(bit));
        svg.line("channel-wire", {place.centerX(), place.y + 1.1}, {place.centerX(), place.bottom()});
    }
}

void drawLane(SvgWriter& svg, const Box& lane, const std::vector<Part>& parts)
{
    drawParts(svg, parts, LAYER_DETAIL_NAMES);
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
    const Box header = box.inner(0, 0, box.width, halden::UNIT_HEADER);
    const Box auxiliary = box.inner(69, 78, 50, 30);
    {
        const auto layer = svg.layer(LAYER_BASE);
        svg.rect("unit", box);
        svg.rect("unit-part", auxiliary);
    }
    drawName(svg, LAYER_BLOCK_NAMES, header, 11, site.name);
    drawName(svg, LAYER_BLOCK_NAMES, auxiliary, 9, "AUX");
    drawName(svg, LAYER_DETAIL_NAMES, header, 6, site.name + "  dual-channel unit");
    drawName(svg, LAYER_DETAIL_NAMES, auxiliary.inner(0, 1, 50, 6), 4, "AUX");
    drawParts(svg,
        {{"unit", auxiliary.inner(5, 9, 18, 8), 3.4, "BIAS"}, {"unit", auxiliary.inner(27, 9, 18, 8), 3.4, "RESCAL"},
            {"unit", auxiliary.inner(5, 20, 18, 8), 3.4, "SCI"},
            {"unit", auxiliary.inner(27, 20, 18, 8), 3.4, "RESET"}},
        LAYER_DETAIL_NAMES);
}

// Data come in and go out at the pads at the bottom; the receive lane is on the left.
void drawChannel(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("channel", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 11, site.name.substr(site.name.find('_') + 1));
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 0.5, box.width, 5), 4, site.name);

    const Box receive = box.inner(3, 0, LANE_WIDTH, box.height);
    const Box transmit = box.inner(32, 0, LANE_WIDTH, box.height);
    drawCodingBlock(svg, receive.inner(0, 8, LANE_WIDTH, 30), "RX PCS", {"FIFO", "CTC", "ALIGN", "8B10B"});
    drawCodingBlock(svg, transmit.inner(0, 8, LANE_WIDTH, 30), "TX PCS", {"FIFO", "8B10B", "PRBS", "POLAR"});
    drawBits(svg, receive.inner(0, 5.6, LANE_WIDTH, 2.4), "RD");
    drawBits(svg, transmit.inner(0, 5.6, LANE_WIDTH, 2.4), "TD");
    drawLane(svg, receive,
        {{"channel-part", receive.inner(0, 41, 27, 11), 3.6, "DES"},
            {"channel-part", receive.inner(0, 54, 27, 11), 3.6, "CDR"},
            {"channel-part", receive.inner(0, 67, 27, 8), 3.6, "EQ"},
            {"channel-fine", receive.inner(0, 77, 13, 11), 3, "RXP"},
            {"channel-fine", receive.inner(14, 77, 13, 11), 3, "RXN"}});
    drawLane(svg, transmit,
        {{"channel-part", transmit.inner(0, 41, 27, 11), 3.6, "SER"},
            {"channel-part", transmit.inner(0, 54, 27, 11), 3.6, "EMPH"},
            {"channel-part", transmit.inner(0, 67, 27, 8), 3.6, "DRIVER"},
            {"channel-fine", transmit.inner(0, 77, 13, 11), 3, "TXP"},
            {"channel-fine", transmit.inner(14, 77, 13, 11), 3, "TXN"}});
}

void drawSystemBlock(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("system", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 10, site.name);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 1, box.width, 6), 4, site.name);
    const bool oscillator = site.name == "OSC";
    drawParts(svg,
        {{"system-part", box.inner(5, 10, 20, 20), 3.4, oscillator ? "RING" : "SENSOR"},
            {"system-part", box.inner(30, 10, 19, 20), 3.4, oscillator ? "DIV" : "ADC"}},
        LAYER_DETAIL_NAMES);
    drawWires(svg, "system-wire", {{{box.x + 25, box.y + 20}, {box.x + 30, box.y + 20}}});
}

void drawConfiguration(SvgWriter& svg, const Site& site)
{
    const Box& box = site.box;
    {
        const auto layer = svg.layer(LAYER_SITES);
        svg.rect("system", box);
    }
    drawName(svg, LAYER_BLOCK_NAMES, box, 10, site.name);
    drawName(svg, LAYER_DETAIL_NAMES, box.inner(0, 2, box.width, 7), 5, site.name);
    std::vector<Part> parts;
    for (const char* name : {"JTAG", "SPI", "SED", "DECRYPT"})
        parts.push_back(
            {"system-part", box.inner(4 + 30.5 * static_cast<double>(parts.size()), 14, 28.5, 34), 4.4, name});
    drawParts(svg, parts, LAYER_DETAIL_NAMES);
}

} // namespace mirn::zeldevicegenerator
