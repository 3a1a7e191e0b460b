// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <string>
#include <string_view>

namespace zelsvg {

// One "name: value" of a style.
struct Declaration
{
    AttributeName property = AttributeName::Unknown;
    std::string_view value;
    bool isImportant = false;
};

// Takes the next declaration off the front of `text`, whose comments are gone. False at the end of the text; a
// declaration that is none, or of another property, comes with an unknown property.
bool takeDeclaration(std::string_view& text, Declaration& declaration);

// Comments become blanks, so that everything else stays where it is. In quotes there are none.
[[nodiscard]] std::string withoutComments(std::string text);

} // namespace zelsvg
