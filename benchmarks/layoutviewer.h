// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <map>
#include <optional>
#include <string>
#include <vector>

class zel_SingleGraphItem;

namespace zelbench {

// Seconds by zoom: "at fit", "at 4x", "at 30x".
using RepaintTimes = std::map<std::string, double>;

// Whether there is a KLayout to run.
[[nodiscard]] bool hasLayoutViewer();

// How long KLayout, in a process of its own, takes to paint the same drawing into a picture as large as the window's
// viewport. Nothing, with a reason in *error, when that could not be found out. `folder` is for scratch files.
[[nodiscard]] std::optional<RepaintTimes> repaintTimesOfLayoutViewer(
    const std::vector<zel_SingleGraphItem*>& records, const QString& folder, QString* error);

} // namespace zelbench
