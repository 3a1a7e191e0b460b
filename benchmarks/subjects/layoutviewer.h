// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <string>
#include <vector>

class zel_SingleGraphItem;

namespace zelbench {

// The seconds of a repaint by zoom: "at fit", "at 4x", "at 30x".
using RepaintTimes = std::map<std::string, double>;

// Returns whether KLayout is installed.
[[nodiscard]] bool hasLayoutViewer();

// Returns how long KLayout, in a process of its own, takes to paint the same drawing into a picture of the size of the
// window's viewport. Returns nothing, with a reason in *error, if that cannot be measured. `folder` is for scratch
// files.
[[nodiscard]] std::optional<RepaintTimes> repaintTimesOfLayoutViewer(
    const std::vector<zel_SingleGraphItem*>& records, const QString& folder, QString* error);

} // namespace zelbench
