// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipscene.h"
#include "platform/contract/zelexport.h"
#include "platform/contract/zelparameter.h"

#include <QList>

#include <memory>

namespace mirn::zelchipview {

class SceneElements;

// The chip drawing: its graphic items, which it owns, and its global parameters. It answers which state an element is
// in and which layers are shown, and applies the engine's dynamic colours and tooltips. The controller owns the scene
// and the state sets.
class ZELCHIPGUI_EXPORT ZelGraphicsScene : public ChipScene
{
    Q_OBJECT
public:
    // The scene is empty until ZelChipGUI::initGrahpicView() loads the drawing.
    explicit ZelGraphicsScene(QObject* parent);
    ~ZelGraphicsScene() override;

    // These take an element id. While the filter is off, filterdItemContains() returns true for every id, so ask
    // isFilterEnable() as well; statesOf() does that.
    [[nodiscard]] bool selectedItemContains(int id) const;
    [[nodiscard]] bool highlightedItemContains(int id) const;
    [[nodiscard]] bool filterdItemContains(int id) const;
    [[nodiscard]] ElementStates statesOf(int id) const override;

    // These select the elements behind items, on the drawing and in the tree, or clear the selection on the drawing.
    // Null and items without an attribute are ignored.
    void addSelectedItem(QGraphicsItem* item);
    void addSelectedItem(const QList<QGraphicsItem*>& items);
    void clearSelectedItems();

    // The visible layers of the scene's first view. The list is empty if there is no view or if it is not a
    // ZelGraphicsView.
    [[nodiscard]] QList<int>& getVisibleLayers();
    [[nodiscard]] bool isLayerVisible(int layer) override;

    // The parameters of the drawing. New layer ranges take effect at the view's next change of scale.
    void setGlobalParameter(const zel_Parameter& parameter);
    [[nodiscard]] const zel_Parameter& globalParameter() const;

    // Returns the items that a zoom without targets shows. The list is empty until a host fills it; the items are not
    // owned.
    [[nodiscard]] QList<QGraphicsItem*>& zoomItems();

    // Brings fill colours and tooltips up to date with the engine and schedules a repaint of what changed.
    void refresh();

    // Returns the items of an element in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);

    // How many elements the drawing has; at once, however many there are.
    [[nodiscard]] int elementCount() const;

    // Decides whether drawings that are loaded from now on get a graphics item for every element at once, which is the
    // default, or an item only when one is asked for. With items on demand a drawing of a million elements opens in a
    // fraction of the time and memory, and looks and behaves the same, but Qt's own questions (items(), itemAt(),
    // render() of scene or view) see only the items that there are. What a host asks of this class, of the view and of
    // the controller makes the items that it returns; before it asks Qt, it calls one of the two operations below. They
    // do nothing while all items are there. A host that adds, moves or removes items of the scene, or changes their
    // order, makes all of them be made.
    void setItemsOnDemand(bool isOn);
    [[nodiscard]] bool areItemsOnDemand() const;

    // Makes the items that may touch an area (scene coordinates), or all of them.
    void makeItemsIn(const QRectF& area);
    void makeAllItems();

    // For the library's own classes; SceneElements is not installed.
    [[nodiscard]] SceneElements& elements();

    // These are called by the scene's elements; see ChipScene.
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
