// SPDX-License-Identifier: MIT
#include "platform/svg/style/gradientcolors.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/document/documenttree.h"
#include "platform/svg/style/cascade.h"
#include "platform/svg/style/style.h"
#include "platform/svg/style/stylesheet.h"

#include <algorithm>
#include <cmath>

namespace mirn::zelsvg {

namespace {

constexpr int LongestChain = 16; // gradients that inherit their stops from one another

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

// Mixes channel by channel; `share` is the fraction of `b`.
[[nodiscard]] Color mixed(const Color& a, const Color& b, double share)
{
    const auto mix = [share](double from, double to) { return from + (to - from) * share; };
    Color color;
    for (unsigned shift = 0; shift <= 16; shift += 8) {
        const double channel = mix((a.rgb >> shift) & 0xFF, (b.rgb >> shift) & 0xFF);
        color.rgb |= static_cast<unsigned>(std::lround(channel)) << shift;
    }
    color.alpha = mix(a.alpha, b.alpha);
    return color;
}

} // namespace

GradientColors::GradientColors(const DocumentTree& tree, StyleSheet& sheet, Diagnostics& diagnostics)
    : m_tree(tree)
    , m_sheet(sheet)
    , m_diagnostics(diagnostics)
{ }

bool GradientColors::find(std::string_view id, Color& color, bool& isFound)
{
    isFound = false;
    unsigned node = m_tree.find(id);
    if (node == Element::NoNode) {
        m_diagnostics.warn(Unsupported::Reference);
        return false;
    }
    if (!isGradient(m_tree.name(node))) {
        isFound = true;
        m_diagnostics.warn(m_tree.name(node) == ElementName::Pattern ? Unsupported::Pattern : Unsupported::Reference);
        return false;
    }
    for (int i = 0; i < LongestChain && node != Element::NoNode && isGradient(m_tree.name(node)); ++i) {
        if (const std::optional<Color>& found = middle(node)) {
            m_diagnostics.warn(Unsupported::Gradient);
            color = *found;
            isFound = true;
            return true;
        }
        node = referredBy(m_tree, node);
    }
    return false;
}

// Evaluates the stops of a gradient only once, however many elements use it.
const std::optional<Color>& GradientColors::middle(unsigned gradient)
{
    const auto known = m_middles.find(gradient);
    return known != m_middles.end() ? known->second
                                    : m_middles.emplace(gradient, middleOfStops(gradient)).first->second;
}

std::optional<Color> GradientColors::middleOfStops(unsigned gradient)
{
    constexpr double Middle = 0.5;
    unsigned before = Element::NoNode;
    double offset = 0.0;
    for (unsigned node = gradient + 1; node < m_tree.end(gradient); node = m_tree.end(node)) {
        if (m_tree.name(node) != ElementName::Stop)
            continue;
        const double next = std::max(offset, stopOffset(node));
        if (next >= Middle && before != Element::NoNode)
            return mixed(stopColor(before), stopColor(node), (Middle - offset) / (next - offset));
        if (next >= Middle)
            return stopColor(node);
        offset = next;
        before = node;
    }
    return before == Element::NoNode ? std::nullopt : std::optional(stopColor(before));
}

double GradientColors::stopOffset(unsigned stop)
{
    double offset = 0.0;
    const std::string_view text = m_tree.value(stop, AttributeName::Offset);
    if (!text.empty())
        parseOpacity(text, m_diagnostics, offset); // the same syntax as an offset
    return offset;
}

Color GradientColors::stopColor(unsigned stop)
{
    Element element;
    m_tree.fill(stop, element);
    Cascade cascade;
    cascade.addAttributes(element);
    m_sheet.apply(m_tree, stop, cascade);
    cascade.addStyle(element.value(AttributeName::Style));
    Color color;
    if (cascade.has(AttributeName::StopColor) && !parseColor(cascade.value(AttributeName::StopColor), color))
        m_diagnostics.warn(Unsupported::Color);
    double opacity = 1.0;
    if (cascade.has(AttributeName::StopOpacity))
        parseOpacity(cascade.value(AttributeName::StopOpacity), m_diagnostics, opacity);
    color.alpha *= opacity;
    return color;
}

} // namespace mirn::zelsvg
