// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipscene.h"
#include "graphics/elements/elementindex.h"
#include "graphics/foreignitems.h"
#include "graphics/painting/displaylist.h"

#include <QMap>

#include <utility>
#include <vector>

namespace mirn::zelchipview {

class ScenePicture;
struct GraphicItemDynamicAttribute;

// The scene's bookkeeping of its elements: the index by id, the display list that the views paint, and whether a host
// has changed anything that only Qt can paint. It passes changes of state and of attributes on to the views. The scene
// owns it; it owns neither items nor attributes.
class SceneElements final
{
public:
    explicit SceneElements(ChipScene& scene); // not owned

    [[nodiscard]] ElementIndex& index() { return m_index; }

    // Brings the display list up to date and returns it.
    [[nodiscard]] DisplayList& displayList();

    // Returns whether the scene holds nothing but the drawing's elements as they were loaded. Only then do the views
    // paint the scene themselves. Otherwise Qt paints everything, including what a host has added or moved.
    [[nodiscard]] bool canPaintFromList() const { return m_foreign.isEmpty() && !m_index.hasQtPainted(); }

    // Call these around changes of many items by the component itself, such as loading a drawing, so that the items are
    // not examined as a host's.
    void suspendForeignItemDetection() { m_foreign.pause(); }
    void resumeForeignItemDetection() { m_foreign.resume(); }

    // These register and remove a picture of a view. The first one is what the view shows. Pictures are not owned. A
    // picture is ignored while its view shows another scene.
    void addPicture(const QGraphicsView* view, ScenePicture* picture);
    void removePicture(const ScenePicture* picture);

    // Returns the visible layers of the scene's first view, or an empty list if that view has no registered picture.
    [[nodiscard]] QList<int>& visibleLayers();

    // Applies the engine's colours and tooltips, keyed by element id in decimal, and repaints what changed.
    void applyDynamicValues(const QMap<QString, GraphicItemDynamicAttribute>& values);

    // Shows what a host has written into the attributes of elements in an area (scene coordinates). `painted`, the
    // picture of the view that is about to paint the area, is only invalidated; the other views are told to repaint.
    void takeOverAttributes(const QRectF& area, ScenePicture* painted);

    // The elements of newly shown layers take over their geometry, so that Qt finds them wherever they lie.
    void synchroniseShown();

    // The items at a point take over the border of their current state, because a hit test includes the border.
    void synchroniseAt(const QPointF& point);

    // These repaint the elements whose state changed: those with these ids, or all.
    void repaint(const std::vector<int>& elementIds);
    void repaintAll();

    // Returns the items of an element in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);

    // Like QGraphicsScene::itemAt(), but does not use Qt's index if the scene is plain.
    [[nodiscard]] QGraphicsItem* topmostItemAt(const QPointF& point, const QTransform& sceneToViewport);

    // Returns the ids of the elements whose shapes touch an area (scene coordinates), topmost first. An id may occur
    // more than once.
    [[nodiscard]] std::vector<int> idsTouching(const QRectF& area);

private:
    void repaint(const std::vector<ChipElement*>& elements, ScenePicture* painted);
    void repaintByItems(const std::vector<ChipElement*>& elements);
    void forgetPictures();
    void updateToolTips(const std::vector<ChipElement*>& elements);
    void synchronise(const std::vector<ChipElement*>& elements);
    [[nodiscard]] bool isForeign(QGraphicsItem* item);
    [[nodiscard]] ScenePicture* pictureOf(const QGraphicsView* view) const;
    [[nodiscard]] std::vector<ScenePicture*> pictures() const;

    ChipScene& m_scene;
    ElementIndex m_index;
    DisplayList m_displayList;
    ForeignItems m_foreign;
    std::vector<std::pair<const QGraphicsView*, ScenePicture*>> m_pictures;
    QList<int> m_noLayers;
};

} // namespace mirn::zelchipview
