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

// The members of the controller: one small class for the state of each subsystem, which the controller owns and
// forwards to, and guarded pointers to objects that others may delete.
struct ZELChipViewDatabase::Parts
{
    explicit Parts(ZELChipViewDatabase* controller);
    ~Parts();

    zelchipengine* engine = nullptr; // owned by the host
    QPointer<QWidget> parentWidget;
    int dirtyFlag = 0;
    ElementIdSet selectedIds;
    const QTreeWidgetItem* shownRow = nullptr; // the row whose ids selectedIds is known to equal; null if none

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
