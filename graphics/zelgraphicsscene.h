// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipscene.h"
#include "platform/contract/zelexport.h"
#include "platform/contract/zelparameter.h"

#include <QList>

#include <memory>

namespace mirn::zelchipview {

class SceneElements;

// The chip drawing: its items, which it owns, and its global parameters. Answers what state an element is in and which
// layers are shown, and applies the engine's dynamic colours and tooltips. The state sets themselves are the
// controller's.
class ZELCHIPGUI_EXPORT ZelGraphicsScene : public ChipScene
{
    Q_OBJECT
public:
    // Empty; the drawing is loaded by ZelChipGUI::initGrahpicView().
    explicit ZelGraphicsScene(QObject* parent);
    ~ZelGraphicsScene() override;

    // By element id. filterdItemContains() is true for every id while the filter is off: ask isFilterEnable() as well.
    [[nodiscard]] bool selectedItemContains(int id) const;
    [[nodiscard]] bool highlightedItemContains(int id) const;
    [[nodiscard]] bool filterdItemContains(int id) const;
    [[nodiscard]] ElementStates statesOf(int id) const override;

    // Select the element behind an item, on the drawing and in the tree. Null and items without attribute are ignored.
    void addSelectedItem(QGraphicsItem* item);
    void addSelectedItem(const QList<QGraphicsItem*>& items);
    void clearSelectedItems();

    // The list of the scene's first view; an empty one while there is none.
    [[nodiscard]] QList<int>& getVisibleLayers();
    [[nodiscard]] bool isLayerVisible(int layer) override;

    // Takes effect on the visible layers at the view's next change of scale.
    void setGlobalParameter(const zel_Parameter& parameter);
    [[nodiscard]] const zel_Parameter& globalParameter() const;

    // What a zoom to no particular items shows. Empty; a host may fill it.
    [[nodiscard]] QList<QGraphicsItem*>& zoomItems();

    // Brings fill colours and tooltips up to date with the engine and schedules a repaint of what changed.
    void refresh();

    // The items of an element, in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);

    // What the library's own classes know of the scene; the class is not installed.
    [[nodiscard]] SceneElements& elements();

    // For the scene's elements.
    [[nodiscard]] bool hasFewTexts() const override;
    void elementEntered(ChipElement* element) override;
    void elementLeaves(ChipElement* element) override;
    void elementRestacked(ChipElement* element) override;
    void elementChanged(ChipElement* element) override;

protected:
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void helpEvent(QGraphicsSceneHelpEvent* event) override;

private:
    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
