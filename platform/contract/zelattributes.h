// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>

// The attributes of one chip record. The engine owns it.
class ZELPLATFORM_EXPORT zelattributes
{
public:
    virtual ~zelattributes();

    // Returns the value of *key, or null if there is none, which differs from an empty value. The text belongs to this
    // object and stays valid until the engine's next change. Keys in use: "tovanel:popup" (tooltip) and "fill" (colour
    // as "#RRGGBB").
    [[nodiscard]] virtual const std::string* getAttributeValue(const std::string* key) const = 0;
};
