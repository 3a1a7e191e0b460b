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

// The design as the contract's cells, and the one-line summaries. A rebuild invalidates all cells handed out before.
class ResourceTree
{
public:
    ResourceTree();
    ~ResourceTree();

    void rebuild(const Device& device, const Design& design);

    // Null before the first rebuild.
    [[nodiscard]] zeltreeviewcell* root();

    [[nodiscard]] static const std::map<int, std::string>& headers();

    // Of the design as it is now, whatever the cells are of: "2 of 3 placed" for what holds others, "on SITE" or "not
    // placed" for what can itself be placed, with its parameters: "on SITE, 100 MHz".
    [[nodiscard]] static std::string summary(const Design& design, const Device& device, int resource);

private:
    struct Node;
    struct Count
    {
        int all = 0;
        int placed = 0;
        int fixed = 0;
    };

    using Counts = std::map<int, Count>; // by resource: what is placed of it and below it

    [[nodiscard]] static Counts count(const Design& design, const std::vector<int>& order);
    Node& makeNode(const Design& design, const Device& device, int resource);

    std::vector<std::unique_ptr<Node>> m_nodes; // the root, then by preorder of the design
};

} // namespace mirn::zelengine
