// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>

// The attribute bag of one chip record.
class ZELPLATFORM_EXPORT zelattributes
{
public:
    virtual ~zelattributes();

    // The value kept under *key, or null when there is none: an empty value and a missing one differ. The text belongs
    // to the bag and stays valid until the engine's next change. Keys in use: "tovanel:popup" (tooltip) and "fill"
    // (colour as "#RRGGBB").
    [[nodiscard]] virtual const std::string* getAttributeValue(const std::string* key) const = 0;
};
