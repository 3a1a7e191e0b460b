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

// What the chip scene knows of its elements: the index by id, the display list that views paint, and whether a host has
// changed anything that only Qt can paint. Passes changes of state and of attributes on to the views.
class SceneElements final
{
public:
    explicit SceneElements(ChipScene& scene); // not owned

    [[nodiscard]] ElementIndex& index() { return m_index; }

    // The elements as the views paint them, up to date.
    [[nodiscard]] DisplayList& displayList();

    // Whether the scene holds nothing but the drawing's elements as they were loaded. Only then do views paint it by
    // themselves; what a host adds or moves is painted by Qt, with everything else.
    [[nodiscard]] bool isPlain() const { return m_foreign.isEmpty() && !m_index.hasUnusual(); }

    // To be called around the loading of a drawing, whose items are not a host's.
    void beginOwnChanges() { m_foreign.pause(); }
    void endOwnChanges() { m_foreign.resume(); }

    // The pictures of the views that show the scene; not owned. One of a view that shows another scene is not used.
    void addPicture(const QGraphicsView* view, ScenePicture* picture);
    void removePicture(const QGraphicsView* view);

    // The list of the scene's first view; an empty one while that is none of ours.
    [[nodiscard]] QList<int>& visibleLayers();

    // Takes over colours and tooltips by element id in decimal, and has what changed painted again.
    void applyDynamicValues(const QMap<QString, GraphicItemDynamicAttribute>& values);

    // What a host wrote into the attributes of elements in an area is shown from now on. `painted` is about to paint
    // the area; other views are told to.
    void takeOverAttributes(const QRectF& area, ScenePicture* painted);

    // Elements of shown layers that were not shown before take over their geometry now, so that they are found
    // wherever they lie.
    void synchroniseShown();

    // The items at a point take over their state, which decides how far their borders reach.
    void synchroniseAt(const QPointF& point);

    // The state of these elements, or of any number of them, changed: they are painted again.
    void repaint(const std::vector<int>& elementIds);
    void repaintAll();

    // The items of an element, in no particular order; empty for an unknown id.
    [[nodiscard]] QList<QGraphicsItem*> itemsOf(int elementId);

    // As QGraphicsScene::itemAt(), without Qt's index where the scene is plain.
    [[nodiscard]] QGraphicsItem* topmostItemAt(const QPointF& point, const QTransform& sceneToViewport);

    // The ids of the elements whose shapes touch an area, from the topmost to the lowest. Some may occur repeatedly.
    [[nodiscard]] std::vector<int> idsTouching(const QRectF& area);

private:
    void repaint(const std::vector<ChipElement*>& elements, ScenePicture* painted);
    void repaintByItems(const std::vector<ChipElement*>& elements);
    void forgetPictures();
    void tellItems(const std::vector<ChipElement*>& elements);
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
