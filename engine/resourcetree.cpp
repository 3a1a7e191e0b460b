// SPDX-License-Identifier: MIT
#include "engine/resourcetree.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/model/resourceparameter.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelengine {

namespace {

constexpr int SiteColumn = 1;

// The view does not know the type "GROUP" and shows its general icon for it, and for the types that only this device
// has. Without a type the row would have no icon and not line up with the others.
const std::string& typeText(const ResourceType* type)
{
    static const std::string other = "GROUP";
    static const std::string texts[] = {"IP", "DCUCHANNEL", "EXTREF", "PLL", "UVCCIO"};
    return type && type->code < FirstOwnCode ? texts[type->code] : other;
}

// Returns, for example, ", 100 MHz".
QString parameterList(const Design& design, int index)
{
    QString result;
    for (const ResourceParameter& parameter : parametersOf(design.resource(index).type))
        result += QStringLiteral(", ") + parameter.withUnit(design.parameter(index, parameter.key));
    return result;
}

} // namespace

// A cell with everything it points to; a node must therefore not move.
struct ResourceTree::Node
{
    std::string name;
    std::string site;
    std::string id;
    std::map<int, const std::string*> columns;
    std::map<int, const std::string*> ids;
    std::vector<zeltreeviewcell*> children;
    zeltreeviewcell cell;
};

ResourceTree::ResourceTree() = default;
ResourceTree::~ResourceTree() = default;

zeltreeviewcell* ResourceTree::root()
{
    return m_nodes.empty() ? nullptr : &m_nodes.front()->cell;
}

const std::map<int, std::string>& ResourceTree::headers()
{
    static const std::map<int, std::string> headers{{0, "Resource"}, {SiteColumn, "Site"}};
    return headers;
}

void ResourceTree::rebuild(const Device& device, const Design& design)
{
    m_nodes.clear();
    m_nodes.push_back(std::make_unique<Node>());
    Node& rootNode = *m_nodes.front();
    rootNode.name = toEngineText(design.name());
    rootNode.cell.name = &rootNode.name;
    rootNode.cell.columns = &rootNode.columns;
    rootNode.cell.children = &rootNode.children;

    std::map<int, Node*> nodes;
    const std::vector<int> order = design.all();
    for (int index : order) {
        const int parent = design.resource(index).parent;
        Node& node = makeNode(design, device, index);
        (parent < 0 ? rootNode : *nodes.at(parent)).children.push_back(&node.cell);
        nodes[index] = &node;
    }
    const Counts counts = count(design, order);
    for (int index : order) {
        const Resource& resource = design.resource(index);
        const Count& parts = counts.at(index);
        zeltreeviewcell& cell = nodes.at(index)->cell;
        cell.draggable = !resource.isFolder() && !resource.fixed;
        cell.resettable = parts.placed > parts.held;
    }
}

// Parents come before their children, so in reverse order every subtree is complete when it is added to its parent.
ResourceTree::Counts ResourceTree::count(const Design& design, const std::vector<int>& order)
{
    Counts counts;
    for (auto it = order.rbegin(); it != order.rend(); ++it) {
        const Resource& resource = design.resource(*it);
        Count& own = counts[*it];
        if (hasOwnSite(resource.type)) {
            ++own.all;
            own.placed += resource.site >= 0 ? 1 : 0;
            own.held += resource.isHeld() ? 1 : 0;
        }
        if (resource.parent >= 0) {
            Count& above = counts[resource.parent];
            above.all += own.all;
            above.placed += own.placed;
            above.held += own.held;
        }
    }
    return counts;
}

ResourceTree::Node& ResourceTree::makeNode(const Design& design, const Device& device, int index)
{
    m_nodes.push_back(std::make_unique<Node>());
    Node& node = *m_nodes.back();
    const Resource& resource = design.resource(index);
    node.name = toEngineText(resource.name);
    node.cell.name = &node.name;
    node.cell.type = &typeText(resource.type);
    node.cell.uvccio = resource.type && resource.type->code == ZEL_RESOURCE_UVCCIO;
    if (const Site* site = device.site(resource.site)) {
        node.site = toEngineText(site->name);
        node.id = std::to_string(site->id);
        node.columns[SiteColumn] = &node.site;
        node.ids[0] = &node.id;
        node.cell.ids = &node.ids;
    }
    node.cell.columns = &node.columns;
    node.cell.children = &node.children;
    return node;
}

std::string ResourceTree::summary(const Design& design, const Device& device, int index)
{
    const Resource& resource = design.resource(index);
    if (hasOwnSite(resource.type)) {
        const Site* site = device.site(resource.site);
        const std::string how = resource.fixed ? "fixed on " : resource.locked ? "locked on " : "on ";
        const std::string place = site ? how + toEngineText(site->name) : "not placed";
        return place + toEngineText(parameterList(design, index));
    }
    int all = 0;
    int placed = 0;
    int locked = 0;
    for (int part : design.subtree(index)) {
        all += hasOwnSite(design.resource(part).type) ? 1 : 0;
        placed += design.resource(part).site >= 0 ? 1 : 0;
        locked += design.resource(part).locked ? 1 : 0;
    }
    if (all == 0)
        return {};
    const std::string summary = std::to_string(placed) + " of " + std::to_string(all) + " placed";
    return locked == 0 ? summary : summary + ", " + std::to_string(locked) + " locked";
}

} // namespace mirn::zelengine
