// SPDX-License-Identifier: MIT
#pragma once

#include <QGraphicsItem>

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
    // without using up a number. The scene owns the items, the controller's registry the attributes.
    void load(const SVGParser& parser);

private:
    void addElement(const zel_SingleGraphItem& record, ZELGraphicItemAttribute* attribute);
    void numberItems();
    void polishItems();

    ZelGraphicsScene* const m_scene;
    std::vector<std::unique_ptr<QGraphicsItem>> m_items; // not yet in the scene; numbered from 1 on
};

} // namespace mirn::zelchipview
