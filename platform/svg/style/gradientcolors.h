// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/style/color.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace zelsvg {

class Diagnostics;
class DocumentTree;
class StyleSheet;

// The colours that stand for gradients: each is what it has in its middle.
class GradientColors
{
public:
    // Nothing is owned.
    GradientColors(const DocumentTree& tree, StyleSheet& sheet, Diagnostics& diagnostics);

    // Of the gradient with that id. False for anything else, with `isFound` telling whether an element says so: one
    // that is missing and a gradient without stops leave the matter open.
    bool find(std::string_view id, Color& color, bool& isFound);

private:
    [[nodiscard]] const std::optional<Color>& middle(unsigned gradient);
    [[nodiscard]] std::optional<Color> middleOfStops(unsigned gradient);
    [[nodiscard]] Color stopColor(unsigned stop);
    [[nodiscard]] double stopOffset(unsigned stop);

    const DocumentTree& m_tree;
    StyleSheet& m_sheet;
    Diagnostics& m_diagnostics;
    std::unordered_map<unsigned, std::optional<Color>> m_middles; // of those that were asked for
};

} // namespace zelsvg
