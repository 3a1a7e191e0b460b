// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltrace.h"
#include "platform/contract/zeltreeviewcell.h"

#include <deque>
#include <map>
#include <memory>
#include <set>
#include <tuple>
#include <utility>

namespace zeltest {

// The lines that are traced from now on to the end of the test function, as "function: text".
inline const std::vector<std::string>& traceFromNowOn()
{
    static std::vector<std::string> lines;
    lines.clear();
    setDiagTraceSink([](const char* text, const char* place) { lines.push_back(std::string(place) + ": " + text); });
    return lines;
}

class FakeAttributes final : public zelattributes
{
public:
    const std::string* getAttributeValue(const std::string* key) const override
    {
        const auto found = values.find(*key);
        return found != values.end() ? &found->second : nullptr;
    }

    std::map<std::string, std::string> values;
};

class FakeChip final : public zelchipdata
{
public:
    const std::string& drawingFile() const override { return drawing; }
    const std::string& filterFile() const override { return filter; }
    const std::vector<const zelchiprecord*>& records() const override { return recordList; }

    void addRecord(unsigned int id, std::map<std::string, std::string> values)
    {
        attributes.emplace_back().values = std::move(values);
        recordList.push_back(&storage.emplace_back(zelchiprecord{id, &attributes.back()}));
    }

    void clearRecords() { recordList.clear(); }

    std::string drawing;
    std::string filter; // none: the component says so on standard output
    std::deque<FakeAttributes> attributes;
    std::deque<zelchiprecord> storage;
    std::vector<const zelchiprecord*> recordList;
};

// An engine whose answers a test sets and whose calls it can read back.
class FakeEngine : public zelchipengine
{
public:
    zelchipdata* chip() override { return &device; }
    zeltreeviewcell* tree() override { return &root; }
    const std::map<int, std::string>& headers() override
    {
        ++headQuestions;
        return headerTexts;
    }
    std::vector<std::vector<std::string>> getResources() override { return usageRows; }
    std::vector<std::string> getResourceHeader() override { return usageHead; }
    std::string getResourceSummary(const std::string* name) override
    {
        const auto found = summaries.find(*name);
        return found != summaries.end() ? found->second : std::string();
    }
    int getResourceType(const std::string* name) override
    {
        const auto found = types.find(*name);
        return found != types.end() ? found->second : ZEL_RESOURCE_UNKNOWN;
    }
    bool canDrop(const std::string* rsc, const std::string* site) override
    {
        calls.push_back("canDrop " + *rsc + " " + *site);
        if (onCall)
            onCall();
        return allowedSites.count(*site) > 0;
    }
    bool showProbPlaceItem(const std::string* rsc, const std::string* site, std::list<std::string>& items) override
    {
        calls.push_back("showProbPlaceItem " + *rsc + " " + *site);
        items = probableSites;
        return true;
    }
    int config(const std::string* name) override
    {
        calls.push_back("config " + *name);
        if (onCall)
            onCall();
        return configResult;
    }
    bool hasDynamicDialog(const std::string* id) override { return sitesWithDialog.count(*id) > 0; }
    const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string*, unsigned int) override
    {
        return dialogValues ? &*dialogValues : nullptr;
    }
    int setDynamicDialogValue(
        const std::string* id, unsigned int, const std::string* key, const std::string* value) override
    {
        calls.push_back("set " + *id + " " + *key + "=" + *value);
        return 1;
    }
    void refresh(int kind) override { calls.push_back("refresh " + std::to_string(kind)); }

    // A cell below `parent` (null: the root). The engine keeps it.
    zeltreeviewcell* addCell(zeltreeviewcell* parent, const std::string& name, const std::string& type = "IP",
        const std::string& id = std::string())
    {
        Node& node = nodes.emplace_back();
        std::tie(node.name, node.type, node.id) = std::tie(name, type, id);
        node.cell.name = &node.name;
        node.cell.type = &node.type;
        node.cell.columns = &node.columns;
        node.cell.children = &node.children;
        node.cell.draggable = true;
        if (!id.empty()) {
            node.ids[0] = &node.id;
            node.cell.ids = &node.ids;
        }
        auto* siblings = parent ? const_cast<std::vector<zeltreeviewcell*>*>(parent->children) : &rootChildren;
        siblings->push_back(&node.cell);
        return &node.cell;
    }

    // A null cell at the top level.
    void addHole() { rootChildren.push_back(nullptr); }

    // Empties the tree.
    void clearCells()
    {
        rootChildren.clear();
        nodes.clear();
    }

    FakeEngine()
    {
        root.name = &rootName;
        root.columns = &noColumns;
        root.children = &rootChildren;
    }

    FakeChip device;
    std::string rootName = "top";
    std::map<int, std::string> headerTexts{{0, "Name"}, {1, "Site"}};
    int headQuestions = 0;
    std::vector<std::vector<std::string>> usageRows;
    std::vector<std::string> usageHead{"Used", "Available"};
    std::map<std::string, std::string> summaries;
    std::map<std::string, int> types;
    std::set<std::string> allowedSites;
    std::list<std::string> probableSites;
    std::unique_ptr<std::map<std::string, std::vector<std::string>>> dialogValues;
    std::set<std::string> sitesWithDialog;
    int configResult = 0;
    std::vector<std::string> calls;
    std::function<void()> onCall; // inside canDrop() and config()

private:
    struct Node
    {
        zeltreeviewcell cell;
        std::string name;
        std::string type;
        std::string id;
        std::map<int, const std::string*> columns;
        std::map<int, const std::string*> ids;
        std::vector<zeltreeviewcell*> children;
    };

    zeltreeviewcell root;
    std::map<int, const std::string*> noColumns;
    std::vector<zeltreeviewcell*> rootChildren;
    std::deque<Node> nodes;
};

} // namespace zeltest
