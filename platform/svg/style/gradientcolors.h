// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/style/color.h"

#include <optional>
#include <string_view>
#include <unordered_map>

namespace mirn::zelsvg {

class Diagnostics;
class DocumentTree;
class StyleSheet;

// The colours that stand for gradients: each gradient is drawn in the colour of its middle. The follower owns it; the
// tree and the style sheet belong to the caller.
class GradientColors
{
public:
    // Nothing is owned.
    GradientColors(const DocumentTree& tree, StyleSheet& sheet, Diagnostics& diagnostics);

    // Finds the colour of the gradient with this id. If there is none it returns false: with `isFound` true if the id
    // belongs to another kind of element, so that nothing is drawn, and with `isFound` false, so that a fallback colour
    // applies, if the element is missing or the gradient has no stops.
    bool find(std::string_view id, Color& color, bool& isFound);

private:
    [[nodiscard]] const std::optional<Color>& middle(unsigned gradient);
    [[nodiscard]] std::optional<Color> middleOfStops(unsigned gradient);
    [[nodiscard]] Color stopColor(unsigned stop);
    [[nodiscard]] double stopOffset(unsigned stop);

    const DocumentTree& m_tree;
    StyleSheet& m_sheet;
    Diagnostics& m_diagnostics;
    std::unordered_map<unsigned, std::optional<Color>> m_middles; // by node, for the gradients used so far
};

} // namespace mirn::zelsvg
