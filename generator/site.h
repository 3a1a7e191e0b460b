// SPDX-License-Identifier: MIT
#pragma once

#include "generator/geometry.h"

#include <string>
#include <utility>
#include <vector>

namespace mirn::zeldevicegenerator {

// One setting of a site: its choices in the settings dialog and its value on a fresh device.
struct Setting
{
    std::string key;
    std::string value;
    std::vector<std::string> choices;
};

// A site of the device: one record of the device file and one outlined cell of the drawing, linked by the id.
struct Site
{
    int id = 0;
    std::string name;
    std::string kind; // the name of a SiteKind
    std::string group; // the bank or dual-channel unit that it belongs to
    std::string popup;
    Box box;
    Side side = Side::Top; // pad ring only
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::string> neighbours; // groups to which a multi-channel IP may spread
    std::vector<std::string> reaches; // groups that a clock source can feed
    std::vector<Setting> settings;
    std::vector<std::pair<std::string, std::vector<std::string>>> disabledBy; // values of the group's settings, by key
};

struct SiteKind
{
    const char* name;
    const char* title; // as in the filter menu
    const char* accepts; // the resource type that can be placed here; null if none can
    int code; // leading digits of the ids
    const char* occupiedFill = nullptr; // colour of an occupied site; null if it keeps its own
};

} // namespace mirn::zeldevicegenerator
