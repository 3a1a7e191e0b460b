// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/documenttree.h"
#include "platform/svg/style/color.h"
#include "platform/svg/style/gradientcolors.h"
#include "platform/svg/style/stylesheet.h"

#include <functional>
#include <string_view>
#include <vector>

namespace zelsvg {

class ElementReceiver;

// Leads the builder of a drawing through the tree that the drawing is kept as, and to the elements that others refer
// to.
class TreeFollower final : private PositionSource
{
public:
    // Asked between steps, with the share of the tree that is done, whether to go on. No is an error.
    using IsWanted = std::function<bool(double share)>;

    // Nothing is owned. `sheet` has the drawing's style rules.
    TreeFollower(const DocumentTree& tree, StyleSheet& sheet, ElementReceiver& receiver, Diagnostics& diagnostics,
        const Limits& limits, IsWanted isWanted);
    ~TreeFollower() override;
    TreeFollower(const TreeFollower&) = delete;
    TreeFollower& operator=(const TreeFollower&) = delete;

    void follow();

    // The following are for the builder.

    // Adds what the style rules say of the element.
    void applyRules(const Element& element, Cascade& cascade) { m_sheet.apply(m_tree, element.node(), cascade); }

    // The colour that stands for a gradient, as GradientColors::find().
    bool serverColor(std::string_view name, Color& color, bool& isFound);

    // Draws what a `use` element refers to, unless that is around it.
    void drawInstance(const Element& use);
    [[nodiscard]] bool isInInstance() const { return !m_openInstances.empty(); }

    // How a `use` changes the element that it draws: the one that starts next.
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
    const IsWanted m_isWanted;
    unsigned m_node = 0; // that the builder is at
    Instance m_instance;
    std::vector<unsigned> m_openInstances; // the elements being drawn through `use`
    std::size_t m_followed = 0;
    std::size_t m_instances = 0;
    std::size_t m_instanceBytes = 0;
};

} // namespace zelsvg
