// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipscene.h"
#include "graphics/elements/elementindex.h"
#include "graphics/foreignitems.h"
#include "graphics/painting/displaylist.h"

#include <QMap>

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

class zel_SingleGraphItem;

namespace mirn::zelchipview {

class ScenePicture;
class ZELGraphicItemAttribute;
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
    // Items that are still to be made are made before Qt paints.
    [[nodiscard]] bool canPaintFromList();

    // The same after what a host has just done has been noticed, for questions between two paints.
    [[nodiscard]] bool isPlain();

    // Takes a drawing without making items, into a scene that has no elements yet: begin, add each record, finish. An
    // item is made when it is first asked for by the operations of this class, or all are when Qt has to paint.
    // addLatent() returns false for a record that is not drawn; dropLatent() takes back all that was added. `make`
    // returns a new item with its number and z value, or null.
    using ItemMaker = std::function<QGraphicsItem*(int loadNumber)>;
    void beginLatent(std::size_t count);
    [[nodiscard]] bool addLatent(const zel_SingleGraphItem& record);
    void finishLatent(ItemMaker make);
    void dropLatent();

    // These make the items that may touch an area, or all items, so that Qt's own questions find them.
    void makeItemsIn(const QRectF& area);
    void makeAllItems();

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

    // These repaint the elements whose state changed: those with these ids, or any. repaintAll() repaints everything.
    void repaint(const std::vector<int>& elementIds);
    void repaintStates();
    void repaintAll();

    // Returns the items of an element in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);
    [[nodiscard]] int count() const { return static_cast<int>(m_index.count()); }

    // Like QGraphicsScene::itemAt(), but does not use Qt's index if the scene is plain.
    [[nodiscard]] QGraphicsItem* topmostItemAt(const QPointF& point, const QTransform& sceneToViewport);

    // Returns items of elements whose shapes touch an area: as many as it takes to span what all of them span.
    [[nodiscard]] QList<QGraphicsItem*> itemsSpanning(const QRectF& area);

    // Returns the place in the display list of what stands for an element: the lowest of its rects, which is a site's
    // outline, else its lowest element; -1 for an unknown id. Makes no item.
    [[nodiscard]] int outlineOf(int elementId);

    // Returns the places in the display list of the elements with these ids. Makes no item.
    [[nodiscard]] std::vector<int> placesOf(const std::vector<int>& elementIds);

    // Returns the attribute of the topmost wanted element whose shape touches an area (scene coordinates), or null. The
    // scene must be plain; see isPlain(). An item is made only of an element that may lie beside the area.
    using IsWanted = std::function<bool(Primitive::Kind kind, int layer)>;
    [[nodiscard]] const ZELGraphicItemAttribute* topmostTouching(const QRectF& area, const IsWanted& isWanted);

    // Returns the ids of the elements whose shapes touch an area (scene coordinates), topmost first. An id may occur
    // more than once.
    [[nodiscard]] std::vector<int> idsTouching(const QRectF& area);

private:
    class ShownLayers;

    void repaint(const std::vector<ChipElement*>& elements, ScenePicture* painted);
    void repaint(const std::vector<int>& places, ScenePicture* painted, unsigned versionBefore);
    [[nodiscard]] bool hasItem(int elementId);
    ChipElement* make(int place);
    void giveGeometry(QGraphicsItem* item);
    void takeOverState(ChipElement& element);
    [[nodiscard]] bool isPendingAt(int place) const;
    [[nodiscard]] std::function<bool(int)> pendingTest() const;
    void repaintByItems(const std::vector<ChipElement*>& elements);
    void forgetPictures();
    void synchroniseFew();
    void updateToolTip(ChipElement& element, ShownLayers& shownLayers);
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
    ItemMaker m_makeItem;
};

} // namespace mirn::zelchipview
