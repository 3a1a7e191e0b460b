// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zeldevicegenerator {

// The sample design, a protocol gateway. It uses every resource type and is partly placed; what is left to place has at
// least one solution. `hdmi` needs three channels of the units that its fixed clock reaches, DCU4 and DCU5, and a
// transmit PLL that reaches both. `xaui` needs four channels, which leaves it DCU2 and DCU3.
inline constexpr const char* SAMPLE_DESIGN = R"json({
  "name": "gateway",
  "resources": [
    {"name": "pcie", "type": "IP", "rate": 5, "children": [
      {"name": "lane0", "type": "DCUCHANNEL", "site": "DCU0_CH0"},
      {"name": "lane1", "type": "DCUCHANNEL", "site": "DCU0_CH1"},
      {"name": "refclk", "type": "EXTREF", "site": "EXTREF0", "fixed": true},
      {"name": "txpll", "type": "PLL", "site": "DCU0_TXPLL"}
    ]},
    {"name": "xaui", "type": "IP", "rate": 3.125, "children": [
      {"name": "lane0", "type": "DCUCHANNEL"},
      {"name": "lane1", "type": "DCUCHANNEL"},
      {"name": "lane2", "type": "DCUCHANNEL"},
      {"name": "lane3", "type": "DCUCHANNEL"},
      {"name": "refclk", "type": "EXTREF", "frequency": 156.25},
      {"name": "txpll", "type": "PLL"}
    ]},
    {"name": "sgmii", "type": "IP", "rate": 1.25, "children": [
      {"name": "lane0", "type": "DCUCHANNEL", "site": "DCU1_CH0"}
    ]},
    {"name": "cpri", "type": "IP", "children": [
      {"name": "lane0", "type": "DCUCHANNEL"},
      {"name": "txpll", "type": "PLL"}
    ]},
    {"name": "hdmi", "type": "IP", "rate": 5, "children": [
      {"name": "lane0", "type": "DCUCHANNEL"},
      {"name": "lane1", "type": "DCUCHANNEL"},
      {"name": "lane2", "type": "DCUCHANNEL"},
      {"name": "refclk", "type": "EXTREF", "site": "EXTREF4", "frequency": 148.5, "fixed": true},
      {"name": "txpll", "type": "PLL", "site": "DCU4_TXPLL", "frequency": 297}
    ]},
    {"name": "clocks", "children": [
      {"name": "refclk_eth", "type": "EXTREF", "site": "EXTREF1", "frequency": 125, "feeds": ["sgmii", "cpri"]},
      {"name": "pll_core", "type": "PLL", "site": "PLL_TL0", "fixed": true},
      {"name": "pll_ddr", "type": "PLL", "site": "PLL_TR0", "frequency": 400},
      {"name": "pll_eth", "type": "PLL", "frequency": 125, "feeds": ["sgmii"]},
      {"name": "pll_video", "type": "PLL", "frequency": 148.5},
      {"name": "pll_serdes", "type": "PLL", "site": "PLL_BL0", "frequency": 250, "feeds": ["pcie", "sgmii"]}
    ]},
    {"name": "supplies", "children": [
      {"name": "vccio_host", "type": "UVCCIO", "site": "VCCIO0_1", "voltage": "3.3 V"},
      {"name": "vccio_host_b", "type": "UVCCIO", "voltage": "3.3 V"},
      {"name": "vccio_ddr", "type": "UVCCIO", "site": "VCCIO3_1", "voltage": "1.5 V", "fixed": true},
      {"name": "vccio_ddr_b", "type": "UVCCIO", "voltage": "1.5 V"},
      {"name": "vccio_lvds", "type": "UVCCIO", "voltage": "2.5 V"},
      {"name": "vccio_video", "type": "UVCCIO", "site": "VCCIO4_1", "voltage": "1.8 V"},
      {"name": "vccio_video_b", "type": "UVCCIO", "site": "VCCIO4_2", "voltage": "1.8 V"}
    ]}
  ]
}
)json";

inline constexpr const char* SAMPLE_PROJECT = R"json({
  "name": "Gateway on Halden H40",
  "flow": "Floorplanning",
  "device": "device.json",
  "design": "design.json",
  "implementations": [{"name": "impl1", "directory": "impl1"}],
  "defaultImplementation": "impl1"
}
)json";

} // namespace mirn::zeldevicegenerator
