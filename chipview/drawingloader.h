// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"

#include <QGraphicsItem>

#include <map>
#include <memory>
#include <vector>

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;
class ZelGraphicsScene;

// Turns the records of a parsed drawing into attributes and items, in the parser's order: later records lie above
// earlier ones. Load numbers start at 1 with every load. The loader parses nothing itself.
class DrawingLoader final
{
public:
    explicit DrawingLoader(ZelGraphicsScene* scene); // not owned

    // Adds an item for each record of a known kind; with items on demand, each is made when it is asked for. Other
    // records, and records whose class does not match their kind, are skipped without using up a number. The scene owns the items, the controller's registry the attributes.
    // Progress goes to the current zelprogress; if that cancels, load() returns false and adds nothing.
    bool load(const SVGParser& parser);

private:
    bool listElements(const SVGParser& parser);
    void provideElements(const SVGParser::Access& recordAt, int count);
    bool makeElements(const SVGParser& parser);
    void addElement(int kind, ZELGraphicItemAttribute* attribute);
    void numberItems();
    bool addItems();
    void rollBack();

    ZelGraphicsScene* const m_scene;
    std::vector<std::unique_ptr<QGraphicsItem>> m_items; // by load number - 1; released to the scene at the end
    std::map<int, ZELGraphicItemAttribute*> m_replaced; // attributes of an earlier load, by load number
    bool m_isCancelled = false;
};

} // namespace mirn::zelchipview
