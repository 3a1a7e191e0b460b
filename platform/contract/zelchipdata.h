// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>
#include <vector>

class zelattributes;

// The values that the engine currently has for one element of the drawing.
struct zelchiprecord
{
    unsigned int id = 0; // element id
    const zelattributes* attributes = nullptr; // owned by the engine; null means no attributes
};

// The engine's device data. The engine owns it, and everything that it returns.
class ZELPLATFORM_EXPORT zelchipdata
{
public:
    virtual ~zelchipdata();

    // File names in the encoding of the file system, or empty if there is no such file.
    [[nodiscard]] virtual const std::string& drawingFile() const = 0;
    [[nodiscard]] virtual const std::string& filterFile() const = 0;

    // Returns the records of the elements whose look the engine determines at run time. Entries may be null. Valid
    // until the engine's next change.
    [[nodiscard]] virtual const std::vector<const zelchiprecord*>& records() const = 0;
};
