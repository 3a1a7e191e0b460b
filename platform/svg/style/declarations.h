// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <string>
#include <string_view>

namespace mirn::zelsvg {

// One "name: value" of a style.
struct Declaration
{
    AttributeName property = AttributeName::Unknown;
    std::string_view value;
    bool isImportant = false;
};

// Removes the next declaration from the front of `text`, which must not contain comments. Returns false at the end of
// the text. An invalid declaration, or one of an unknown property, has the property Unknown.
bool takeDeclaration(std::string_view& text, Declaration& declaration);

// Replaces comments by spaces, so that offsets do not change. Quoted strings contain no comments.
[[nodiscard]] std::string withoutComments(std::string text);

} // namespace mirn::zelsvg
