// SPDX-License-Identifier: MIT
#include "platform/svg/paintservers.h"

#include "platform/svg/cascade.h"
#include "platform/svg/diagnostics.h"
#include "platform/svg/documenttree.h"
#include "platform/svg/number.h"
#include "platform/svg/stylesheet.h"

#include <algorithm>

namespace zelsvg {

namespace {

constexpr int LongestChain = 16; // of gradients that take their stops from one another

[[nodiscard]] unsigned firstStop(const DocumentTree& tree, unsigned gradient)
{
    for (unsigned node = gradient + 1; node < tree.end(gradient); node = tree.end(node)) {
        if (tree.name(node) == ElementName::Stop)
            return node;
    }
    return Element::NoNode;
}

[[nodiscard]] unsigned referredBy(const DocumentTree& tree, unsigned node)
{
    std::string_view reference = tree.value(node, AttributeName::Href);
    if (reference.empty())
        reference = tree.value(node, AttributeName::XlinkHref);
    return reference.empty() || reference.front() != '#' ? Element::NoNode : tree.find(reference.substr(1));
}

[[nodiscard]] bool isGradient(ElementName name)
{
    return name == ElementName::LinearGradient || name == ElementName::RadialGradient;
}

[[nodiscard]] Color stopColor(const DocumentTree& tree, StyleSheet& sheet, unsigned stop)
{
    Element element;
    tree.fill(stop, element);
    Cascade cascade;
    cascade.addAttributes(element);
    sheet.apply(tree, stop, cascade);
    cascade.addStyle(element.value(AttributeName::Style));
    Color color;
    parseColor(cascade.value(AttributeName::StopColor), color);
    const std::string_view opacity = trimmed(cascade.value(AttributeName::StopOpacity));
    double value = 1.0;
    const char* end = opacity.data() + opacity.size();
    const char* stopped = opacity.empty() ? nullptr : scanNumber(opacity.data(), end, value);
    if (stopped)
        color.alpha *= std::clamp(stopped != end && *stopped == '%' ? value / 100.0 : value, 0.0, 1.0);
    return color;
}

} // namespace

bool gradientColor(const DocumentTree& tree, StyleSheet& sheet, std::string_view id, Diagnostics& diagnostics,
    Color& color, bool& isFound)
{
    unsigned node = tree.find(id);
    isFound = node != Element::NoNode;
    if (!isFound) {
        diagnostics.warn(Unsupported::Reference);
        return false;
    }
    if (!isGradient(tree.name(node))) {
        diagnostics.warn(tree.name(node) == ElementName::Pattern ? Unsupported::Pattern : Unsupported::Reference);
        return false;
    }
    diagnostics.warn(Unsupported::Gradient);
    for (int i = 0; i < LongestChain && node != Element::NoNode && isGradient(tree.name(node)); ++i) {
        const unsigned stop = firstStop(tree, node);
        if (stop != Element::NoNode) {
            color = stopColor(tree, sheet, stop);
            return true;
        }
        node = referredBy(tree, node);
    }
    return false;
}

} // namespace zelsvg
