// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elementindex.h"
#include "graphics/paintrules.h"
#include "platform/contract/zelexport.h"
#include "platform/contract/zelparameter.h"

#include <QGraphicsScene>
#include <QList>

namespace mirn::zelchipview {

// The chip drawing: its items, which it owns, and its global parameters. Answers what state an element is in and which
// layers are shown, and applies the engine's dynamic colours and tooltips. The state sets themselves are the
// controller's.
class ZELCHIPGUI_EXPORT ZelGraphicsScene : public QGraphicsScene
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
    [[nodiscard]] ElementStates statesOf(int id) const;

    // Select the element behind an item, on the drawing and in the tree. Null and items without attribute are ignored.
    void addSelectedItem(QGraphicsItem* item);
    void addSelectedItem(const QList<QGraphicsItem*>& items);
    void clearSelectedItems();

    // The list of the scene's first view; an empty one while there is none.
    [[nodiscard]] QList<int>& getVisibleLayers();
    [[nodiscard]] bool isLayerVisible(int layer);

    // Takes effect on the visible layers at the view's next change of scale.
    void setGlobalParameter(const zel_Parameter& parameter);
    [[nodiscard]] const zel_Parameter& globalParameter() const { return m_parameter; }

    // What a zoom to no particular items shows. Empty; a host may fill it.
    [[nodiscard]] QList<QGraphicsItem*>& zoomItems() { return m_zoomItems; }

    // Brings fill colours and tooltips up to date with the engine and schedules a repaint of what changed.
    void refresh();

    // Elements of shown layers that were not shown before take over their geometry now, so that they are found and
    // painted wherever they lie.
    void synchroniseShownElements();

    // The state of these elements changed: they take over their new look and are painted again.
    void repaintElements(const QSet<int>& elementIds);

    // The items of an element, in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId) const;

    // For the items, which enter it and leave it with the scene.
    [[nodiscard]] ElementIndex& elementIndex() { return m_index; }

protected:
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;

private:
    void repaint(ChipElement* element);

    zel_Parameter m_parameter;
    QList<QGraphicsItem*> m_zoomItems;
    ElementIndex m_index;
};

} // namespace mirn::zelchipview
