// SPDX-License-Identifier: MIT
#pragma once

#include "generator/site.h"

#include <vector>

// The floorplan of the sample device, the invented FPGA "Halden H40": its sites and their relations.
//
//     PLL |  bank 0    bank 1   bank 4 | PLL
//     ----+----------------------------+----
//     b 7 |  logic, block RAM,         | b 2
//     b 6 |  DSP, clock spines  SerDes | b 3
//     ----+----------------------------+----
//     PLL |  bank 8, cfg   SerDes      | PLL
namespace mirn::zeldevicegenerator::halden {

inline constexpr const char* DEVICE_NAME = "Halden H40";
inline constexpr double Width = 1392;
inline constexpr double Height = 860;

inline constexpr Box Die{6, 6, 1380, 848};
inline constexpr Box Core{80, 80, 1232, 642};
inline constexpr Box VerticalSpine{592, 84, 16, 634};
inline constexpr Box HorizontalSpine{84, 393, 1224, 16};
inline constexpr double UnitHeader = 17; // height of the strip with the name of a dual-channel unit

// The kinds in the order in which they must be drawn: a site that contains others comes before them.
[[nodiscard]] const std::vector<SiteKind>& siteKinds();

// All sites, kind by kind, in the order of siteKinds(). An id consists of the kind's code, three digits for the row (or
// the unit's number) and three for the column.
[[nodiscard]] std::vector<Site> sites();

} // namespace mirn::zeldevicegenerator::halden
