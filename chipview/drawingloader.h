// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsItem>

#include <map>
#include <memory>
#include <vector>

class SVGParser;
class zel_SingleGraphItem;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;
class ZelGraphicsScene;

// Turns the records of a parsed drawing into attributes and items, in the parser's order: later records lie above
// earlier ones. Numbers start at 1 with every load.
class DrawingLoader final
{
public:
    explicit DrawingLoader(ZelGraphicsScene* scene); // not owned

    // Adds an item for each record of a known kind; others, and records whose class is not their kind's, are skipped
    // without using up a number. The scene owns the items, the controller's registry the attributes. Reports to the
    // current zelprogress; when that cancels, gives false and adds nothing.
    bool load(const SVGParser& parser);

private:
    bool makeElements(const SVGParser& parser);
    void addElement(const zel_SingleGraphItem& record, ZELGraphicItemAttribute* attribute);
    void numberItems();
    bool addItems();
    void withdraw();

    ZelGraphicsScene* const m_scene;
    std::vector<std::unique_ptr<QGraphicsItem>> m_items; // numbered from 1 on; the scene's when all are in it
    std::map<int, ZELGraphicItemAttribute*> m_replaced; // attributes of an earlier load, by load number
};

} // namespace mirn::zelchipview
