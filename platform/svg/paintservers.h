// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/color.h"

#include <string_view>

namespace zelsvg {

class Diagnostics;
class DocumentTree;
class StyleSheet;

// The colour that stands for the gradient with that id: its first stop's. False for anything else, with `isFound`
// telling whether there is such an element.
bool gradientColor(const DocumentTree& tree, StyleSheet& sheet, std::string_view id, Diagnostics& diagnostics,
    Color& color, bool& isFound);

} // namespace zelsvg
