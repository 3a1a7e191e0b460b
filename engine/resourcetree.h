// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zeltreeviewcell.h"

#include <QString>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirn::zelengine {

class Design;
class Device;

// The design as the contract's cells, and the one-line summaries. The engine owns it. A rebuild invalidates all cells
// handed out before.
class ResourceTree
{
public:
    ResourceTree();
    ~ResourceTree();

    void rebuild(const Device& device, const Design& design);

    // Returns null before the first rebuild.
    [[nodiscard]] zeltreeviewcell* root();

    [[nodiscard]] static const std::map<int, std::string>& headers();

    // Describes a resource of the current design, even if the cells are older: "2 of 3 placed, 1 locked" for one that
    // holds others; "on SITE", "fixed on SITE", "locked on SITE" or "not placed", with its parameters as in "on SITE,
    // 100 MHz", for one that can be placed itself.
    [[nodiscard]] static std::string summary(const Design& design, const Device& device, int resource);

private:
    struct Node;
    struct Count
    {
        int all = 0;
        int placed = 0;
        int held = 0; // fixed or locked
    };

    using Counts = std::map<int, Count>; // by resource: its subtree, itself included

    [[nodiscard]] static Counts count(const Design& design, const std::vector<int>& order);
    Node& makeNode(const Design& design, const Device& device, int resource);

    std::vector<std::unique_ptr<Node>> m_nodes; // the root, then the design in preorder
};

} // namespace mirn::zelengine
