// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>
#include <vector>

class zelattributes;

// What the engine knows of one element of the drawing right now.
struct zelchiprecord
{
    unsigned int id = 0; // element id
    const zelattributes* attributes = nullptr; // the engine's; may be null: no attributes
};

// The engine's device data. Owned by the engine, as is everything it hands out.
class ZELPLATFORM_EXPORT zelchipdata
{
public:
    virtual ~zelchipdata();

    // File names in the encoding of the file system; empty when there is none.
    [[nodiscard]] virtual const std::string& drawingFile() const = 0;
    [[nodiscard]] virtual const std::string& filterFile() const = 0;

    // The records whose look the engine determines at run time; entries may be null. Valid until the engine's next
    // change.
    [[nodiscard]] virtual const std::vector<const zelchiprecord*>& records() const = 0;
};
