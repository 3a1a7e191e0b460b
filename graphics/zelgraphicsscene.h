// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elementindex.h"
#include "graphics/paintrules.h"
#include "platform/contract/zelexport.h"
#include "platform/contract/zelparameter.h"

#include <QGraphicsScene>
#include <QHash>
#include <QList>
#include <QRectF>

#include <memory>
#include <vector>

namespace mirn::zelchipview {

class DisplayList;
class ZelGraphicsView;

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

    // What a host wrote into the attributes of elements in an area is shown from now on. `painted` is about to paint
    // the area; other views are told to.
    void takeOverAttributes(const QRectF& area, ZelGraphicsView* painted);

    // Elements of shown layers that were not shown before take over their geometry now, so that they are found
    // wherever they lie.
    void synchroniseShownElements();

    // The items at a point take over their state, which decides how far their borders reach.
    void synchroniseAt(const QPointF& point);

    // The state of these elements changed: they are painted again.
    void repaintElements(const std::vector<int>& elementIds);

    // The state of any number of elements changed.
    void repaintAllElements();

    // The items of an element, in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);

    // What QGraphicsScene::itemAt() gives, without Qt's index where the scene is plain.
    [[nodiscard]] QGraphicsItem* topmostItemAt(const QPointF& point, const QTransform& sceneToViewport);

    // The ids of the elements whose shapes touch an area, from the topmost to the lowest. Some may occur repeatedly.
    [[nodiscard]] std::vector<int> elementsTouching(const QRectF& area);

    // For the items, which enter it and leave it with the scene.
    [[nodiscard]] ElementIndex& elementIndex() { return m_index; }

    // The elements as the views paint them, up to date.
    [[nodiscard]] DisplayList& displayList();

    // Whether the scene holds nothing but the drawing's elements as they were loaded. Only then views paint it by
    // themselves; what a host adds or moves is painted by Qt, with everything else.
    [[nodiscard]] bool isPlain() const { return m_strangers.isEmpty() && !m_index.hasUnusual(); }

    // To be called around the loading of a drawing: what comes into the scene meanwhile is not taken for a host's.
    void beginOwnChanges();
    void endOwnChanges();

protected:
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragMoveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;
    void mouseMoveEvent(QGraphicsSceneMouseEvent* event) override;
    void helpEvent(QGraphicsSceneHelpEvent* event) override;

private:
    using Strangers = QHash<QGraphicsItem*, QRectF>; // visible items that are no elements, and where they lay

    void repaint(const std::vector<ChipElement*>& elements, ZelGraphicsView* painted);
    void tellItems(const std::vector<ChipElement*>& elements);
    void repaintByItems(const std::vector<ChipElement*>& elements);
    void forgetPictures();
    void synchronise(const std::vector<ChipElement*>& elements);
    void hearOfChanges();
    void lookForStrangers(const QList<QRectF>& areas);
    [[nodiscard]] Strangers strangersAmong(const QList<QGraphicsItem*>& items);
    [[nodiscard]] bool areAllKnownAmong(const Strangers& found, const QList<QRectF>& areas) const;
    [[nodiscard]] bool isStranger(QGraphicsItem* item);
    [[nodiscard]] QList<ZelGraphicsView*> chipViews() const;

    zel_Parameter m_parameter;
    QList<QGraphicsItem*> m_zoomItems;
    ElementIndex m_index;
    std::unique_ptr<DisplayList> m_displayList;
    Strangers m_strangers; // may be gone: only what was just found in the scene is looked at
};

} // namespace mirn::zelchipview
