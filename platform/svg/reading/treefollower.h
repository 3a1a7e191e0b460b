// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/documenttree.h"
#include "platform/svg/style/color.h"
#include "platform/svg/style/gradientcolors.h"
#include "platform/svg/style/stylesheet.h"

#include <functional>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

class ElementReceiver;

// Leads the builder through the tree of a stored drawing, and to elements that others refer to. It lives while one
// drawing is read, owns neither tree nor builder, and draws nothing itself.
class TreeFollower final : private PositionSource
{
public:
    // Called between steps with the fraction of the tree that is done. Returning false cancels, which is an error.
    using ReportProgress = std::function<bool(double share)>;

    // Nothing is owned. `sheet` holds the drawing's style rules.
    TreeFollower(const DocumentTree& tree, StyleSheet& sheet, ElementReceiver& receiver, Diagnostics& diagnostics,
        const Limits& limits, ReportProgress reportProgress);
    ~TreeFollower() override;
    TreeFollower(const TreeFollower&) = delete;
    TreeFollower& operator=(const TreeFollower&) = delete;

    void follow();

    // The operations below are for the builder.

    // Adds the declarations of the style rules that match the element.
    void applyRules(const Element& element, Cascade& cascade) { m_sheet.apply(m_tree, element.node(), cascade); }

    // Returns the colour that stands for a gradient; see GradientColors::find().
    bool serverColor(std::string_view name, Color& color, bool& isFound);

    // Draws the element that a `use` element refers to, unless the `use` is inside of it.
    void drawInstance(const Element& use);
    [[nodiscard]] bool isInInstance() const { return !m_openInstances.empty(); }

    // The changes that a `use` makes to the element it draws, which is the next one to start.
    struct Instance
    {
        std::string_view width;
        std::string_view height;
        bool isNext = false;
    };
    [[nodiscard]] Instance takeInstance();

private:
    [[nodiscard]] Position position() const override { return m_tree.position(m_node); }
    [[nodiscard]] Position positionOf(std::string_view part) const override { return m_tree.positionOf(m_node, part); }
    void follow(unsigned node);
    void countNode(unsigned node);
    [[nodiscard]] unsigned target(const Element& use) const;

    const DocumentTree& m_tree;
    StyleSheet& m_sheet;
    ElementReceiver& m_receiver;
    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    GradientColors m_gradients;
    const ReportProgress m_reportProgress;
    unsigned m_node = 0; // the node at which the builder is
    Instance m_instance;
    std::vector<unsigned> m_openInstances; // the elements that are being drawn through `use`
    std::size_t m_followed = 0;
    std::size_t m_instances = 0;
    std::size_t m_instanceBytes = 0;
};

} // namespace mirn::zelsvg
