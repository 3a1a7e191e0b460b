// SPDX-License-Identifier: MIT
#pragma once

#include "engine/generator/geometry.h"

#include <string>
#include <utility>
#include <vector>

namespace mirn::zeldevicegenerator {

// One setting of a site: what the settings dialog offers and what is in force on a fresh device.
struct Setting
{
    std::string key;
    std::string value;
    std::vector<std::string> choices;
};

// A site of the device: one record of the device file and one outlined cell of the drawing, tied together by the id.
struct Site
{
    int id = 0;
    std::string name;
    std::string kind; // a SiteKind's name
    std::string group; // sites that belong together: a bank, a dual-channel unit
    std::string popup;
    Box box;
    Side side = Side::Top; // pad ring only
    std::vector<std::pair<std::string, std::string>> attributes;
    std::vector<std::string> neighbours; // groups that a multi-channel IP may spread to
    std::vector<std::string> reaches; // groups that a clock source can feed
    std::vector<Setting> settings;
    std::vector<std::pair<std::string, std::vector<std::string>>> disabledBy; // values of the group's settings, by key
};

struct SiteKind
{
    const char* name;
    const char* title; // as in the filter menu
    const char* accepts; // the resource type that can be placed here; null: none
    int code; // leading digits of the ids
    const char* occupiedFill = nullptr; // colour once something is placed here
};

} // namespace mirn::zeldevicegenerator
