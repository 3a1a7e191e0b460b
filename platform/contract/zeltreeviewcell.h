// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

// One node of the engine's resource tree. The engine owns the cells and everything they point at; they stay valid
// until the engine's next refresh(). Texts are 8-bit (ISO 8859-1).
struct zeltreeviewcell
{
    const std::string* name = nullptr; // own name, one component of the resource name
    const std::string* type = nullptr; // resource kind ("IP", "PLL", ...); may be null: no icon
    void* reserved1 = nullptr; // the engine's; not read by the component
    const std::map<int, const std::string*>* columns = nullptr; // values behind column 0, by column number
    const std::map<int, const std::string*>* ids
        = nullptr; // the first entry is the resource id in decimal; may be null
    const std::vector<zeltreeviewcell*>* children = nullptr; // in display order; may be null
    void* reserved2 = nullptr; // the engine's
    bool draggable = false; // may be dragged onto the chip
    bool resettable = false; // has a placement to reset
    bool uvccio = false; // shown with the icon of the kind "UVCCIO" whatever the type says
};
