// SPDX-License-Identifier: MIT
#include "generator/haldenfloorplan.h"

#include <algorithm>
#include <cstring>

namespace mirn::zeldevicegenerator::halden {

namespace {

constexpr char POWER_DOWN[] = "POWER DOWN"; // a setting of both channels of a unit
constexpr char PLL_OFF[] = "OFF"; // of a unit's transmit PLL

constexpr double RingDepth = 54; // depth of the pad ring
constexpr double PadPitch = 17;
constexpr double PadLength = 15;
constexpr double PadDepth = 28;

constexpr int TileRows = 18;
constexpr double TileWidth = 31; // pitch
constexpr double TileHeight = 33;
constexpr double MacroWidth = 52; // pitch of the block RAM and DSP columns
constexpr int MacroHeight = 3; // in tiles
constexpr double SpineGap = 32; // between the tiles above and below the horizontal spine
// Logic, block RAM, DSP; on each side of the vertical spine, and further right above the horizontal one.
constexpr const char* COLUMNS[] = {"LLELLLDLLLELLL", "LLLELLLDLLLELL"};
constexpr const char* UPPER_COLUMNS = "LLLLLL";

struct Bank
{
    const char* number;
    Side side;
    Box box;
    int firstPad; // number of its first pad pair on this side
    int positions; // pads and supplies
    const char* voltage;
};

constexpr Bank BANKS[] = {
    {"0", Side::Top, {80, 16, 515, RingDepth}, 1, 30, "3.3 V"},
    {"1", Side::Top, {605, 16, 515, RingDepth}, 15, 30, "3.3 V"},
    {"2", Side::Right, {1322, 80, RingDepth, 316}, 1, 18, "2.5 V"},
    {"3", Side::Right, {1322, 406, RingDepth, 316}, 9, 18, "1.8 V"},
    {"4", Side::Top, {1130, 16, 182, RingDepth}, 29, 10, "1.8 V"},
    {"6", Side::Left, {16, 406, RingDepth, 316}, 9, 18, "1.8 V"},
    {"7", Side::Left, {16, 80, RingDepth, 316}, 1, 18, "2.5 V"},
    {"8", Side::Bottom, {80, 732, 328, 112}, 1, 18, "3.3 V"},
};

constexpr Box UNITS[] = {{418, 732, 188, 112}, {670, 732, 188, 112}, {872, 732, 188, 112}, {1124, 732, 188, 112},
    {1124, 606, 188, 112}, {1124, 423, 188, 112}};
constexpr Box REFERENCES[] = {{610, 732, 56, 55}, {610, 789, 56, 55}, {1064, 732, 56, 55}, {1064, 789, 56, 55},
    {1160, 543, 56, 55}, {1220, 543, 56, 55}};

const SiteKind& kind(const char* name)
{
    const std::vector<SiteKind>& kinds = siteKinds();
    return *std::find_if(kinds.begin(), kinds.end(), [name](const SiteKind& k) { return !std::strcmp(k.name, name); });
}

class Planner
{
public:
    std::vector<Site> plan()
    {
        regions();
        banks();
        corners();
        configuration();
        units();
        tiles();
        clocks();
        return std::move(m_sites);
    }

private:
    Site& add(const char* kindName, int row, int column, std::string name, std::string group, const Box& box)
    {
        Site site;
        site.id = kind(kindName).code * 1000000 + row * 1000 + column;
        site.kind = kindName;
        site.popup = std::string(kind(kindName).title) + ' ' + name;
        site.name = std::move(name);
        site.group = std::move(group);
        site.box = box;
        return m_sites.emplace_back(std::move(site));
    }

    void regions();
    void banks();
    void padsOf(const Bank& bank);
    void corners();
    void configuration();
    void units();
    static std::vector<Setting> settingsOf(int unit);
    void channelsOf(int unit);
    void references();
    void tiles();
    double tileColumns(const char* types, int rows, double left);
    void tileColumn(char type, int rows, int column, double x);
    static double tileTop(int row);
    void clocks();

    std::vector<Site> m_sites;
    int m_logicColumns = 0;
    int m_macroColumns[2] = {0, 0}; // block RAM, DSP
};

void Planner::regions()
{
    const double widths[][2] = {{506, 698}, {506, 506}}; // the units beside the last one belong to no region
    const double halfHeight = 308;
    for (int row = 0; row < 2; ++row) {
        for (int column = 0; column < 2; ++column) {
            const std::string name = "Q" + std::to_string(row * 2 + column);
            const Box box{Core.x + 2 + column * 530.0, Core.y + 2 + row * 330.0, widths[row][column], halfHeight};
            add("REGION", row + 1, column + 1, name, name, box);
        }
    }
}

void Planner::banks()
{
    for (const Bank& bank : BANKS) {
        const std::string number = bank.number;
        Site& site = add("BANK", 1, std::stoi(number), "BANK" + number, "BANK" + number, bank.box);
        site.side = bank.side;
        site.attributes = {{"voltage", bank.voltage}, {"pads", std::to_string(bank.positions - 2)}};
        site.popup = "I/O bank " + number + ", " + std::to_string(bank.positions - 2) + " pads";
    }
    for (const Bank& bank : BANKS)
        padsOf(bank);
}

// Each bank has supplies at one third and two thirds of its length, and the clock-capable pads in its middle.
void Planner::padsOf(const Bank& bank)
{
    static constexpr const char* LETTERS[] = {"PT", "PR", "PB", "PL"};
    const int sideNumber = static_cast<int>(bank.side);
    const bool horizontal = bank.side == Side::Top || bank.side == Side::Bottom;
    const double length = horizontal ? bank.box.width : bank.box.height;
    const double start = (length - bank.positions * PadPitch) / 2 + (PadPitch - PadLength) / 2;
    const EdgeCell ring{bank.side, bank.box};
    const std::string group = std::string("BANK") + bank.number;
    int pad = 0;
    int supply = 0;
    for (int position = 0; position < bank.positions; ++position) {
        const Box box = ring.part(start + position * PadPitch, 2, PadLength, PadDepth);
        if (position == bank.positions / 3 || position == bank.positions - 1 - bank.positions / 3) {
            ++supply;
            Site& site = add("VCCIO", std::stoi(bank.number) + 1, supply,
                std::string("VCCIO") + bank.number + '_' + std::to_string(supply), group, box);
            site.side = bank.side;
            site.popup = "I/O supply " + std::to_string(supply) + " of bank " + bank.number;
            continue;
        }
        const int pair = bank.firstPad + pad / 2;
        const std::string name = LETTERS[sideNumber] + std::to_string(pair) + (pad % 2 ? 'B' : 'A');
        Site& site = add("PAD", sideNumber + 1, pair * 2 + pad % 2, name, group, box);
        site.side = bank.side;
        const bool clock = pad / 4 == (bank.positions - 2) / 8;
        site.attributes = {{"function", clock ? "clock" : "general"}, {"polarity", pad % 2 ? "B" : "A"}};
        site.popup = "Pad " + name + " of bank " + bank.number + (clock ? ", clock input" : "");
        ++pad;
    }
}

void Planner::corners()
{
    const auto pll = [this](int row, int column, const char* name, const Box& box, std::vector<std::string> reaches) {
        Site& site = add("PLL", row, column, name, {}, box);
        site.reaches = std::move(reaches);
    };
    pll(1, 1, "PLL_TL0", {16, 16, 54, 26}, {});
    pll(2, 1, "PLL_TL1", {16, 44, 54, 26}, {});
    pll(1, 2, "PLL_TR0", {1322, 16, 54, 26}, {});
    pll(2, 2, "PLL_TR1", {1322, 44, 54, 26}, {});
    pll(3, 1, "PLL_BL0", {16, 732, 54, 36}, {"DCU0", "DCU1"});
    pll(4, 1, "PLL_BL1", {16, 770, 54, 36}, {"DCU0", "DCU1"});
    pll(3, 2, "PLL_BR0", {1322, 732, 54, 36}, {"DCU2", "DCU3", "DCU4", "DCU5"});
    pll(4, 2, "PLL_BR1", {1322, 770, 54, 36}, {"DCU2", "DCU3", "DCU4", "DCU5"});
    add("SYSTEM", 1, 1, "OSC", {}, {16, 808, 54, 36}).popup = "Oscillator";
    add("SYSTEM", 1, 2, "DTR", {}, {1322, 808, 54, 36}).popup = "Digital temperature readout";
}

void Planner::configuration()
{
    add("CONFIG", 1, 1, "CONFIG", "BANK8", {180, 736, 128, 54}).popup
        = "Configuration logic: JTAG, SPI, error detection";
}

void Planner::units()
{
    const int count = static_cast<int>(std::size(UNITS));
    for (int unit = 0; unit < count; ++unit) {
        const std::string name = "DCU" + std::to_string(unit);
        Site& site = add("DCU", unit, 0, name, name, UNITS[unit]);
        site.popup = "Dual-channel unit " + name + ": two SerDes channels and a transmit PLL";
        for (int other : {unit - 1, unit + 1}) {
            if (other >= 0 && other < count)
                site.neighbours.push_back("DCU" + std::to_string(other));
        }
        site.settings = settingsOf(unit);
    }
    for (int unit = 0; unit < count; ++unit)
        channelsOf(unit);
    references();
}

// The fresh device has two faults, so that the list of problems has something to find: the transmit PLL of DCU4 is off
// where the design uses it, and of DCU5 one channel is powered down, which is possible for both together only.
std::vector<Setting> Planner::settingsOf(int unit)
{
    constexpr int UnitWithPllOff = 4;
    constexpr int UnitHalfDown = 5;
    const std::vector<std::string> receive{"EXTREF A", "EXTREF B", "CORE CLOCK"};
    return {{"CH0", receive[0], receive}, {"CH1", unit == UnitHalfDown ? POWER_DOWN : receive[0], receive},
        {"CH0:CH1", {}, {POWER_DOWN}},
        {"TXPLL", unit == UnitWithPllOff ? PLL_OFF : "X20", {"X8", "X10", "X16", "X20", "X25", PLL_OFF}}};
}

void Planner::channelsOf(int unit)
{
    const Box& box = UNITS[unit];
    const std::string group = "DCU" + std::to_string(unit);
    for (int channel = 0; channel < 2; ++channel) {
        const std::string name = "CH" + std::to_string(channel);
        Site& site = add(
            "CHANNEL", unit, channel, group + '_' + name, group, box.inner(4 + channel * 118, UnitHeader, 62, 91));
        site.popup = "SerDes channel " + std::to_string(channel) + " of " + group;
        site.attributes = {{"channel", std::to_string(channel)}};
        site.disabledBy = {{name, {POWER_DOWN}}};
    }
    Site& pll = add("TXPLL", unit, 0, group + "_TXPLL", group, box.inner(69, UnitHeader, 50, 58));
    pll.popup = "Transmit PLL of " + group;
    pll.reaches = {group};
    pll.disabledBy = {{"TXPLL", {PLL_OFF}}};
}

void Planner::references()
{
    for (int number = 0; number < static_cast<int>(std::size(REFERENCES)); ++number) {
        Site& site = add("EXTREF", 1, number, "EXTREF" + std::to_string(number), {}, REFERENCES[number]);
        site.popup = "External reference clock " + std::to_string(number);
        const int unit = number / 2 * 2; // two clocks for two units
        site.reaches = {"DCU" + std::to_string(unit), "DCU" + std::to_string(unit + 1)};
    }
}

void Planner::tiles()
{
    tileColumns(COLUMNS[0], TileRows, Core.x + 6);
    const double right = tileColumns(COLUMNS[1], TileRows, VerticalSpine.right() + 9);
    tileColumns(UPPER_COLUMNS, TileRows / 2, right);
}

// Returns the right end of the columns.
double Planner::tileColumns(const char* types, int rows, double left)
{
    double x = left;
    for (const char* type = types; *type; ++type) {
        const bool logic = *type == 'L';
        tileColumn(*type, rows, logic ? ++m_logicColumns : ++m_macroColumns[*type == 'D'], x);
        x += logic ? TileWidth : MacroWidth;
    }
    return x;
}

void Planner::tileColumn(char type, int rows, int column, double x)
{
    const int height = type == 'L' ? 1 : MacroHeight;
    for (int row = 0; row < rows; row += height) {
        const bool below = row >= TileRows / 2;
        const double y = tileTop(row);
        const std::string place = "R" + std::to_string(row / height + 1) + "C" + std::to_string(column);
        const std::string region = "Q" + std::to_string((below ? 2 : 0) + (x > VerticalSpine.x ? 1 : 0));
        const Box tile{x + 1, y + 1, TileWidth - 2, TileHeight - 2};
        const Box macro{x + 2, y + 1, MacroWidth - 4, TileHeight * MacroHeight - 2};
        const int number = row / height + 1;
        if (type == 'L')
            add("PFU", number, column, place, region, tile).popup
                = "Logic tile " + place + ": 4 slices, 8 LUT4, 8 registers";
        else if (type == 'E')
            add("EBR", number, column, "EBR_" + place, region, macro).popup = "Block RAM " + place + ", 18 Kbit";
        else
            add("DSP", number, column, "DSP_" + place, region, macro).popup
                = "DSP block " + place + ": two 18x18 multipliers, 54-bit ALU";
    }
}

double Planner::tileTop(int row)
{
    return Core.y + 8 + row * TileHeight + (row >= TileRows / 2 ? SpineGap : 0);
}

// Adds the hub where the spines cross, and a driver beside each row of tiles.
void Planner::clocks()
{
    add("CLOCK", 0, 0, "CLKHUB", {}, {540, 391, 120, 20}).popup
        = "Clock hub: primary clock selection of the four regions";
    for (int row = 0; row < TileRows; ++row) {
        const std::string number = std::to_string(row + 1);
        const Box box{VerticalSpine.x + 1, tileTop(row) + TileHeight / 2 - 6.5, VerticalSpine.width - 2, 13};
        add("ROWCLOCK", row + 1, 0, "RCLK" + number, {}, box).popup = "Clock driver of row " + number;
    }
}

} // namespace

const std::vector<SiteKind>& siteKinds()
{
    static const std::vector<SiteKind> kinds = {
        {"REGION", "Clock region", nullptr, 1},
        {"BANK", "I/O bank", nullptr, 2},
        {"PAD", "I/O pad", nullptr, 3},
        {"VCCIO", "I/O supply", "UVCCIO", 4, "#cf8a91"},
        {"PLL", "PLL", "PLL", 5, "#dc9675"},
        {"SYSTEM", "System block", nullptr, 6},
        {"CONFIG", "Configuration", nullptr, 7},
        {"DCU", "SerDes unit", "IP", 8},
        {"CHANNEL", "SerDes channel", "DCUCHANNEL", 9, "#a690d2"},
        {"TXPLL", "Transmit PLL", "PLL", 10, "#dc9675"},
        {"EXTREF", "Reference clock", "EXTREF", 11, "#e2ae4c"},
        {"PFU", "Logic", nullptr, 12},
        {"EBR", "Block RAM", nullptr, 13},
        {"DSP", "DSP", nullptr, 14},
        {"CLOCK", "Clock hub", nullptr, 15},
        {"ROWCLOCK", "Row clock", nullptr, 16},
    };
    return kinds;
}

std::vector<Site> sites()
{
    std::vector<Site> result = Planner().plan();
    std::stable_sort(result.begin(), result.end(),
        [](const Site& left, const Site& right) { return left.id / 1000000 < right.id / 1000000; });
    return result;
}

} // namespace mirn::zeldevicegenerator::halden
