// SPDX-License-Identifier: MIT
#pragma once

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/elementidset.h"

#include <QPointer>

namespace mirn::zelchipview {

class DropQuery;
class DynamicValues;
class PlacementHighlighter;
class ResourceTreeModel;
class ToolActions;
class TreeMenus;
class UsageRows;
class ViewFilter;

// What the controller holds. One small class for the state of each subsystem, which the controller owns and forwards
// to; the objects that others may delete, which it does not rely on.
struct ZELChipViewDatabase::Parts
{
    explicit Parts(ZELChipViewDatabase* controller);
    ~Parts();

    zelchipengine* engine = nullptr; // the host's
    QPointer<QWidget> parentWidget;
    int dirtyFlag = 0;
    ElementIdSet selectedIds;
    const QTreeWidgetItem* shownRow = nullptr; // the row whose ids the selected ones are known to be; null: none

    std::unique_ptr<SVGParser> parser;
    std::unique_ptr<ResourceTreeModel> treeModel;
    std::unique_ptr<UsageRows> usageRows;
    std::unique_ptr<DropQuery> dropQuery;
    std::unique_ptr<PlacementHighlighter> highlighter;
    std::unique_ptr<DynamicValues> dynamicValues;
    std::unique_ptr<ViewFilter> filter;
    std::unique_ptr<ToolActions> toolActions;
    std::unique_ptr<TreeMenus> treeMenus;
    std::unique_ptr<HoverText> hoverText;
    std::unique_ptr<AttributeRegistry> attributes; // by load number

    QPointer<ZelGraphicsScene> scene;
    QPointer<ZelGraphicsView> view;
    QPointer<ZelTree> tree;
    QPointer<ZelResTable> table;
};

} // namespace mirn::zelchipview
