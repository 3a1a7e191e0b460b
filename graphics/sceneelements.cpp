// SPDX-License-Identifier: MIT
#include "graphics/sceneelements.h"

#include "graphics/elements/attributeregistry.h"
#include "graphics/elements/chipelement.h"
#include "graphics/elements/drawingcontroller.h"
#include "graphics/elements/dynamiclook.h"
#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/painting/picking.h"
#include "graphics/scenepicture.h"

#include <QGraphicsView>

#include <algorithm>
#include <iterator>
#include <optional>

namespace mirn::zelchipview {

namespace {

// Above this number of changed elements it is faster to repaint everything than to repaint them one by one.
constexpr std::size_t MostToRepaintOneByOne = 2000;

// Up to this many items may change while ForeignItems listens; it examines the area of every change.
constexpr std::size_t FewItems = 16;

// Returns the elements that are not waiting for their layer to be shown.
std::vector<ChipElement*> shownAmong(const std::vector<ChipElement*>& elements)
{
    std::vector<ChipElement*> shown;
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(shown), [](auto* e) { return !e->isPending(); });
    return shown;
}

bool isOfTheDrawing(const GraphicItemDynamicAttribute& values)
{
    return values.fill == ZEL_DYNAMIC_EMPTY_STRING && values.popup == ZEL_DYNAMIC_EMPTY_STRING;
}

} // namespace

// Asks the scene for each layer once in a row: neighbours are mostly on one layer.
class SceneElements::ShownLayers
{
public:
    explicit ShownLayers(ChipScene& scene)
        : m_scene(scene)
    { }

    bool contain(int layer)
    {
        if (!m_isShown || layer != m_layer) {
            m_layer = layer;
            m_isShown = m_scene.isLayerVisible(layer);
        }
        return *m_isShown;
    }

private:
    ChipScene& m_scene;
    int m_layer = 0; // that was asked for last
    std::optional<bool> m_isShown;
};

SceneElements::SceneElements(ChipScene& scene)
    : m_scene(scene)
    , m_foreign(
          scene, [this](QGraphicsItem* item) { return isForeign(item); }, [this] { repaintAll(); })
{ }

DisplayList& SceneElements::displayList()
{
    if (m_index.hasLatent() && m_displayList.isOutdated(m_index))
        makeAllItems(); // only items have an order
    m_displayList.update(m_index);
    return m_displayList;
}

bool SceneElements::isForeign(QGraphicsItem* item)
{
    auto* element = dynamic_cast<ChipElement*>(item);
    if (!element || !element->attribute())
        return true;
    m_index.updateQtPainting(element); // Qt reports a move only as a change of the scene
    return false;
}

void SceneElements::addPicture(const QGraphicsView* view, ScenePicture* picture)
{
    m_pictures.emplace_back(view, picture);
}

void SceneElements::removePicture(const ScenePicture* picture)
{
    const auto isIt = [picture](const auto& entry) { return entry.second == picture; };
    m_pictures.erase(std::remove_if(m_pictures.begin(), m_pictures.end(), isIt), m_pictures.end());
}

ScenePicture* SceneElements::pictureOf(const QGraphicsView* view) const
{
    const auto entry = std::find_if(
        m_pictures.begin(), m_pictures.end(), [view](const auto& candidate) { return candidate.first == view; });
    return entry != m_pictures.end() ? entry->second : nullptr;
}

std::vector<ScenePicture*> SceneElements::pictures() const
{
    std::vector<ScenePicture*> pictures;
    const QList<QGraphicsView*> views = m_scene.views();
    for (QGraphicsView* view : views) {
        if (!pictureOf(view))
            view->viewport()->update(); // without a picture it paints item by item
        for (const auto& [owner, picture] : m_pictures) {
            if (owner == view)
                pictures.push_back(picture);
        }
    }
    return pictures;
}

QList<int>& SceneElements::visibleLayers()
{
    const QList<QGraphicsView*> views = m_scene.views();
    if (ScenePicture* picture = views.isEmpty() ? nullptr : pictureOf(views.first()))
        return picture->visibleLayers();
    m_noLayers.clear();
    return m_noLayers;
}

// Each element is dealt with at once, because coming back to it later would mean waiting for memory.
void SceneElements::applyDynamicValues(const QMap<QString, GraphicItemDynamicAttribute>& values)
{
    const AttributeRegistry& attributes = DrawingController::current().attributes();
    DisplayList& list = displayList();
    ShownLayers shownLayers(m_scene);
    std::vector<ChipElement*> changed;
    changed.reserve(static_cast<std::size_t>(values.size()));
    for (auto entry = values.cbegin(); entry != values.cend(); ++entry) {
        const std::optional<int> id = elementIdOf(entry.key());
        if (!id)
            continue;
        if (m_index.hasLatent() && isOfTheDrawing(entry.value()) && !hasItem(*id))
            continue; // a latent element has the drawing's values
        m_index.visit(*id, [&](ChipElement* element) {
            ZELGraphicItemAttribute* attribute = attributes.find(element->loadNumber());
            // A later load may have put another element under this load number.
            if (!attribute || attribute->itemId != *id)
                return;
            const bool isChanged = mirn::zelchipview::applyDynamicValues(*attribute, entry.value());
            // takeOver() also notices what a host wrote into the attribute earlier.
            if (!list.takeOver(m_index, *element) && !isChanged)
                return;
            changed.push_back(element);
            updateToolTip(*element, shownLayers);
        });
    }
    if (m_index.hasFewItems())
        synchronise(shownAmong(changed));
    repaint(changed, nullptr);
}

// Items of hidden layers take over their tooltip when their layer is shown.
void SceneElements::updateToolTip(ChipElement& element, ShownLayers& shownLayers)
{
    if (shownLayers.contain(element.attribute()->layer))
        element.takeOverToolTip();
    else
        m_index.markPending(&element);
}

bool SceneElements::hasItem(int elementId)
{
    bool isAny = false;
    m_index.visitSlots(elementId, [&isAny](int, const ChipElement* element) { isAny = isAny || element; });
    return isAny;
}

void SceneElements::takeOverAttributes(const QRectF& area, ScenePicture* painted)
{
    if (m_index.watchedUpperBound() == 0)
        return;
    const std::vector<ChipElement*> changed = displayList().takeOver(m_index, area);
    synchronise(shownAmong(changed));
    if (canPaintFromList()) {
        repaint(changed, painted);
        return;
    }
    if (!changed.empty()) // Qt paints for now; the cached pictures are used again later
        forgetPictures();
}

void SceneElements::synchroniseShown()
{
    const std::vector<ChipElement*> shown = m_index.takePending(visibleLayers());
    synchronise(shown);
    for (ChipElement* element : shown)
        element->updateToolTip();
}

void SceneElements::synchronise(const std::vector<ChipElement*>& elements)
{
    const bool areMany = elements.size() > FewItems;
    if (areMany)
        suspendForeignItemDetection();
    for (ChipElement* element : elements) {
        const ElementStates states = m_scene.statesOf(element->attribute()->itemId);
        element->synchronise(states);
        if (m_index.hasFewItems() && m_scene.isLayerVisible(element->attribute()->layer))
            element->updateBrush(states);
    }
    if (areMany)
        resumeForeignItemDetection();
}

void SceneElements::synchroniseAt(const QPointF& point)
{
    DisplayList& list = displayList();
    const QRectF area = picking::around(point);
    std::vector<ChipElement*> elements;
    for (int place : list.placesIn(area)) {
        ChipElement* element = list.boundsOf(place).intersects(area) ? list.element(place) : nullptr;
        if (element && !element->isPending())
            elements.push_back(element);
    }
    synchronise(elements);
}

void SceneElements::repaint(const std::vector<int>& elementIds)
{
    if (elementIds.size() > MostToRepaintOneByOne && !m_index.isSmall()) {
        repaintStates();
        return;
    }
    DisplayList& list = displayList();
    const unsigned before = list.version();
    std::vector<ChipElement*> changed;
    std::vector<int> latent; // their places: nobody can have changed more than their states
    for (int id : elementIds) {
        m_index.visitSlots(id, [&](int slot, ChipElement* element) {
            if (!element) {
                latent.push_back(slot);
                return;
            }
            list.takeOver(m_index, *element);
            changed.push_back(element);
        });
    }
    synchronise(shownAmong(changed));
    repaint(changed, nullptr);
    if (!latent.empty() && canPaintFromList())
        repaint(latent, nullptr, before);
}

void SceneElements::repaintStates()
{
    synchroniseFew();
    for (ScenePicture* picture : pictures())
        picture->repaintStates();
}

void SceneElements::repaintAll()
{
    synchroniseFew();
    for (ScenePicture* picture : pictures())
        picture->repaintAll();
}

void SceneElements::synchroniseFew()
{
    if (m_index.hasFewItems())
        synchronise(shownAmong(m_index.inPaintOrder()));
}

// `painted` is the picture of a view that is in its paint event. It is invalidated without scheduling another repaint.
void SceneElements::repaint(const std::vector<ChipElement*>& elements, ScenePicture* painted)
{
    if (elements.empty())
        return;
    if (!canPaintFromList()) {
        repaintByItems(elements);
        return;
    }
    if (!painted && !m_index.isSmall() && 2 * elements.size() > m_index.count()) { // no need to find out where they are
        for (ScenePicture* picture : pictures())
            picture->repaintAll();
        return;
    }
    const unsigned before = m_displayList.version();
    const DisplayList& list = displayList();
    std::vector<int> places;
    places.reserve(elements.size());
    for (const ChipElement* element : elements)
        places.push_back(list.placeOf(*element));
    repaint(places, painted, before);
}

// The elements are no others than those that the list had in the version before.
void SceneElements::repaint(const std::vector<int>& places, ScenePicture* painted, unsigned versionBefore)
{
    if (displayList().version() != versionBefore) {
        repaintAll(); // some moved, and the areas that they left must be repainted too
        return;
    }
    for (ScenePicture* picture : pictures()) {
        if (picture == painted)
            picture->invalidateElements(places);
        else
            picture->repaintPlaces(places);
    }
}

// Only Qt knows where a host has moved an element and what it has put around it.
void SceneElements::repaintByItems(const std::vector<ChipElement*>& elements)
{
    for (ChipElement* element : elements)
        element->graphicsItem()->update();
    forgetPictures();
}

void SceneElements::forgetPictures()
{
    for (ScenePicture* picture : pictures())
        picture->forgetAll();
}

QList<QGraphicsItem*> SceneElements::itemsOf(int elementId)
{
    QList<QGraphicsItem*> items;
    for (ChipElement* element : m_index.elements(elementId))
        items.append(element->graphicsItem());
    return items;
}

bool SceneElements::isPlain()
{
    m_foreign.deliverPendingChanges();
    return canPaintFromList();
}

QGraphicsItem* SceneElements::topmostItemAt(const QPointF& point, const QTransform& sceneToViewport)
{
    return isPlain() ? picking::topmostItem(displayList(), point) : m_scene.itemAt(point, sceneToViewport);
}

const ZELGraphicItemAttribute* SceneElements::topmostTouching(const QRectF& area, const IsWanted& isWanted)
{
    const DisplayList& list = displayList();
    const int place = picking::topmostTouching(m_displayList, area, pendingTest(), [&](const Primitive& primitive) {
        return isWanted(static_cast<Primitive::Kind>(primitive.kind), list.layers()[primitive.layer]);
    });
    if (place < 0)
        return nullptr;
    const ChipElement* element = list.knownElement(place);
    // Where there is no item, the place tells the number.
    return DrawingController::current().attributes().find(element ? element->loadNumber() : place + 1);
}

std::vector<int> SceneElements::idsTouching(const QRectF& area)
{
    if (isPlain())
        return picking::idsTouching(displayList(), area, pendingTest());
    const AttributeRegistry& attributes = DrawingController::current().attributes();
    std::vector<int> ids;
    const QList<QGraphicsItem*> found = m_scene.items(area, Qt::IntersectsItemShape);
    for (const QGraphicsItem* item : found) {
        const int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt();
        if (const ZELGraphicItemAttribute* attribute = attributes.find(loadNumber))
            ids.push_back(attribute->itemId);
    }
    return ids;
}

std::function<bool(int)> SceneElements::pendingTest() const
{
    if (!m_index.hasPending())
        return {};
    return [this](int place) { return isPendingAt(place); };
}

QList<QGraphicsItem*> SceneElements::itemsSpanning(const QRectF& area)
{
    if (!isPlain() || !m_index.hasLatent())
        return m_scene.items(area, Qt::IntersectsItemShape);
    DisplayList& list = displayList();
    QList<QGraphicsItem*> items;
    for (int place : picking::outermost(list, picking::placesTouching(list, area, pendingTest())))
        items.append(m_displayList.element(place)->graphicsItem());
    return items;
}

} // namespace mirn::zelchipview
