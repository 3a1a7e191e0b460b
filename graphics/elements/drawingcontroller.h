// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelconstants.h"
#include "platform/contract/zelexport.h"

#include <QMap>

#include <vector>

class QGraphicsSceneDragDropEvent;
class QMenu;
class QPoint;
class QString;

namespace mirn::zelchipview {

class AttributeRegistry;
class ElementIdSet;
struct GraphicItemDynamicAttribute;
class HoverText;

// The interface that the drawing needs of the controller, which implements it: attributes, states of elements, and the
// targets of gestures. ZELChipViewDatabase documents the operations.
class ZELCHIPGUI_EXPORT DrawingController
{
public:
    using Provider = DrawingController& (*)();

    // Returns the controller of the process. The provider creates it on first use.
    static DrawingController& current();

    // Must be set before the first item, scene or view is created. Not null.
    static void setProvider(Provider provider);

    [[nodiscard]] virtual AttributeRegistry& attributes() = 0;
    [[nodiscard]] virtual QMap<QString, GraphicItemDynamicAttribute>& getGraphicsDynamicInfo() = 0;
    [[nodiscard]] virtual HoverText& hoverText() = 0;

    [[nodiscard]] virtual ElementIdSet& selectedIds() = 0;
    [[nodiscard]] virtual ElementIdSet& highlightedIds() = 0;
    [[nodiscard]] virtual ElementIdSet& filteredIds() = 0;
    [[nodiscard]] virtual bool isFilterEnable() const = 0;
    virtual void addSelctedItem(int id, bool selectInTree) = 0;
    virtual void addSelctedItems(const std::vector<int>& ids) = 0;
    virtual void removeSelectedItem(int id) = 0;

    [[nodiscard]] virtual int getMouseMode() const = 0;
    [[nodiscard]] virtual QMenu* getViewFilterMenu() = 0;
    virtual void showDynamicDlg(const QPoint& pos, Enum_Dynamic_Dialog_Type type) = 0;

    [[nodiscard]] virtual int getResourceType(const QString& name) const = 0;
    [[nodiscard]] virtual bool canDrop(QGraphicsSceneDragDropEvent* event, int id) const = 0;
    virtual int drop(int id) = 0;
    virtual bool highlightProbPlaceItems(QGraphicsSceneDragDropEvent* event, int id) = 0;
    virtual bool highlightProbPlaceItems() = 0;
    virtual void clearHighlightedProbPlaceItems() = 0;

protected:
    ~DrawingController() = default;
};

} // namespace mirn::zelchipview
