// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

// One node of the engine's resource tree. The engine owns the cells and everything that they point to; they stay valid
// until the engine's next refresh(). Texts are 8-bit (ISO 8859-1).
struct zeltreeviewcell
{
    const std::string* name = nullptr; // the node's own name, one component of the resource name
    const std::string* type = nullptr; // resource kind ("IP", "PLL", ...); null means no icon
    void* reserved1 = nullptr; // for the engine; the component does not read it
    const std::map<int, const std::string*>* columns = nullptr; // values of columns 1 and up, by column number
    const std::map<int, const std::string*>* ids
        = nullptr; // the first entry is the resource id in decimal; may be null
    const std::vector<zeltreeviewcell*>* children = nullptr; // in display order; may be null
    void* reserved2 = nullptr; // for the engine
    bool draggable = false; // may be dragged onto the chip
    bool resettable = false; // has a placement to reset
    bool uvccio = false; // shown with the icon of the kind "UVCCIO" whatever the type says
};
