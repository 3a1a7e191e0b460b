// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsscene.h"

#include "chipview/zelchipviewdatabase.h"
#include "dialogs/graphicitemdynamicattribute.h"
#include "graphics/attributeregistry.h"
#include "graphics/chipelement.h"
#include "graphics/grown.h"
#include "graphics/painting/displaylist.h"
#include "graphics/picking.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsview.h"
#include "placement/hovertext.h"

#include <QCoreApplication>
#include <QGraphicsItem>
#include <QGraphicsSceneDragDropEvent>
#include <QGraphicsSceneHelpEvent>

#include <algorithm>
#include <cctype>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace mirn::zelchipview {

namespace {

// From the drag's pointer to the hover text, in screen pixels: clear of the dragged icon.
constexpr QPoint HoverTextOffset(30, 30);

ZELChipViewDatabase& database()
{
    return *ZELChipViewDatabase::getInstance();
}

// More changed elements than this are found faster by painting all again.
constexpr std::size_t MostToRepaintOneByOne = 2000;

// Fewer items than this may tell the scene of their change, which it looks into.
constexpr std::size_t FewItems = 16;

// Those that are not to stay as they are until their layer is shown.
std::vector<ChipElement*> shownAmong(const std::vector<ChipElement*>& elements)
{
    std::vector<ChipElement*> shown;
    std::copy_if(elements.begin(), elements.end(), std::back_inserter(shown), [](auto* e) { return !e->isPending(); });
    return shown;
}

// Null where the item is no element of the drawing.
const ZELGraphicItemAttribute* attributeOf(const QGraphicsItem& item)
{
    return database().attributes().find(item.data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt());
}

unsigned int fillColorOf(ZELGraphicItemAttribute& attribute)
{
    const void* fill = attribute.getAttribute(ATTR_FILL_COLOR);
    return fill ? *static_cast<const unsigned int*>(fill) : 0U;
}

// The element that a key of the engine's values names: an id in decimal, as QString::number() writes it.
std::optional<int> elementIdOf(const QString& key)
{
    const bool isNegative = key.startsWith(QLatin1Char('-'));
    const auto first = isNegative ? 1 : 0;
    constexpr int MostDigits = 10;
    if (key.size() == first || key.size() > first + MostDigits)
        return std::nullopt;
    qint64 id = 0;
    for (int i = first; i < static_cast<int>(key.size()); ++i) {
        const int digit = key[i].unicode() - u'0';
        if (digit < 0 || digit > 9 || (id == 0 && i > first))
            return std::nullopt;
        id = 10 * id + digit;
    }
    if (isNegative)
        id = -id;
    const bool isId = id >= std::numeric_limits<int>::min() && id <= std::numeric_limits<int>::max();
    return isId && !(isNegative && id == 0) ? std::optional<int>(static_cast<int>(id)) : std::nullopt;
}

// Of a text like "#a0b0c0"; 0 where what follows the first character is no hexadecimal number.
unsigned int rgbOf(const QString& text)
{
    constexpr int UsualLength = 7;
    unsigned int rgb = 0;
    bool isUsual = text.size() == UsualLength;
    for (int i = 1; isUsual && i < UsualLength; ++i) {
        const QChar digit = text[i];
        isUsual = digit.unicode() < 128 && std::isxdigit(digit.unicode());
        rgb = 16 * rgb + (digit.isDigit() ? digit.unicode() - u'0' : (digit.unicode() | 0x20) - u'a' + 10);
    }
    return isUsual ? rgb : text.mid(1).toUInt(nullptr, 16);
}

// Gives whether anything changed.
bool applyDynamicValues(ZELGraphicItemAttribute& attribute, const GraphicItemDynamicAttribute& values)
{
    const unsigned int previousFill = fillColorOf(attribute);
    if (values.fill == ZEL_DYNAMIC_EMPTY_STRING)
        attribute.setToDefaultValue(ATTR_FILL_COLOR);
    else
        attribute.setFillColor(rgbOf(values.fill));
    const bool isFillNew = fillColorOf(attribute) != previousFill;
    if (values.popup != ZEL_DYNAMIC_EMPTY_STRING) {
        if (attribute.toolTip == values.popup)
            return isFillNew;
        attribute.toolTip = values.popup;
        return true;
    }
    const QString previousToolTip = attribute.toolTip;
    attribute.setToDefaultValue(ATTR_TOOLTIP);
    return isFillNew || attribute.toolTip != previousToolTip;
}

} // namespace

ZelGraphicsScene::ZelGraphicsScene(QObject* parent)
    : QGraphicsScene(parent)
    , m_displayList(std::make_unique<DisplayList>())
{
    connect(this, &QGraphicsScene::changed, this, &ZelGraphicsScene::lookForStrangers);
}

ZelGraphicsScene::~ZelGraphicsScene() = default;

bool ZelGraphicsScene::selectedItemContains(int id) const
{
    return database().selectedIds().contains(id);
}

bool ZelGraphicsScene::highlightedItemContains(int id) const
{
    return database().highlightedIds().contains(id);
}

bool ZelGraphicsScene::filterdItemContains(int id) const
{
    return !database().isFilterEnable() || database().filteredIds().contains(id);
}

ElementStates ZelGraphicsScene::statesOf(int id) const
{
    ElementStates states;
    states.setFlag(ElementState::Selected, selectedItemContains(id));
    states.setFlag(ElementState::Filtered, database().isFilterEnable() && filterdItemContains(id));
    states.setFlag(ElementState::Highlighted, highlightedItemContains(id));
    return states;
}

void ZelGraphicsScene::addSelectedItem(QGraphicsItem* item)
{
    if (!item)
        return;
    if (const ZELGraphicItemAttribute* attribute = attributeOf(*item))
        database().addSelctedItem(attribute->itemId, true);
}

void ZelGraphicsScene::addSelectedItem(const QList<QGraphicsItem*>& items)
{
    for (QGraphicsItem* item : items)
        addSelectedItem(item);
}

void ZelGraphicsScene::clearSelectedItems()
{
    database().selectedIds().clear();
}

QList<int>& ZelGraphicsScene::getVisibleLayers()
{
    const QList<QGraphicsView*> all = views();
    auto* view = all.isEmpty() ? nullptr : qobject_cast<ZelGraphicsView*>(all.first());
    if (view)
        return view->getVisibleLayers();
    static QList<int> none;
    none.clear();
    return none;
}

bool ZelGraphicsScene::isLayerVisible(int layer)
{
    const QList<int>& layers = getVisibleLayers();
    return std::find(layers.rbegin(), layers.rend(), layer) != layers.rend();
}

void ZelGraphicsScene::setGlobalParameter(const zel_Parameter& parameter)
{
    m_parameter = parameter;
}

void ZelGraphicsScene::refresh()
{
    const QMap<QString, GraphicItemDynamicAttribute>& dynamicInfo = database().getGraphicsDynamicInfo();
    DisplayList& list = displayList();
    std::vector<ChipElement*> changed;
    for (auto entry = dynamicInfo.cbegin(); entry != dynamicInfo.cend(); ++entry) {
        const std::optional<int> id = elementIdOf(entry.key());
        if (!id)
            continue;
        m_index.visit(*id, [&](ChipElement* element) {
            ZELGraphicItemAttribute* attribute = database().attributes().find(element->loadNumber());
            // A later load may have put another element under this load number.
            if (!attribute || attribute->itemId != *id)
                return;
            const bool isChanged = applyDynamicValues(*attribute, entry.value());
            // Also what somebody else wrote into the attribute before.
            if (list.takeOver(m_index, *element) || isChanged)
                changed.push_back(element);
        });
    }
    tellItems(changed);
    repaint(changed, nullptr);
}

// Items that were shown take over what is new, the others when they are.
void ZelGraphicsScene::tellItems(const std::vector<ChipElement*>& elements)
{
    for (ChipElement* element : elements) {
        if (isLayerVisible(element->attribute()->layer))
            element->updateToolTip();
        else
            m_index.awaitShow(element);
    }
    if (m_index.isSmall())
        synchronise(shownAmong(elements));
}

void ZelGraphicsScene::takeOverAttributes(const QRectF& area, ZelGraphicsView* painted)
{
    if (m_index.mostWatched() == 0)
        return;
    const std::vector<ChipElement*> changed = displayList().takeOver(m_index, area);
    synchronise(shownAmong(changed));
    if (isPlain()) {
        repaint(changed, painted);
        return;
    }
    if (!changed.empty()) // Qt paints now; the pictures that are kept come back later
        forgetPictures();
}

void ZelGraphicsScene::synchroniseShownElements()
{
    const std::vector<ChipElement*> shown = m_index.takePending(getVisibleLayers());
    synchronise(shown);
    for (ChipElement* element : shown)
        element->updateToolTip();
}

void ZelGraphicsScene::synchronise(const std::vector<ChipElement*>& elements)
{
    const bool areMany = elements.size() > FewItems;
    if (areMany)
        beginOwnChanges();
    for (ChipElement* element : elements) {
        const ElementStates states = statesOf(element->attribute()->itemId);
        element->synchronise(states);
        if (m_index.isSmall() && isLayerVisible(element->attribute()->layer))
            element->showFill(states);
    }
    if (areMany)
        endOwnChanges();
}

void ZelGraphicsScene::synchroniseAt(const QPointF& point)
{
    DisplayList& list = displayList();
    const QRectF area = picking::around(point);
    std::vector<ChipElement*> elements;
    for (int place : list.placesIn(area)) {
        if (list.boundsOf(place).intersects(area) && !list.element(place)->isPending())
            elements.push_back(list.element(place));
    }
    synchronise(elements);
}

void ZelGraphicsScene::repaintElements(const std::vector<int>& elementIds)
{
    if (elementIds.size() > MostToRepaintOneByOne && !m_index.isSmall()) {
        repaintAllElements();
        return;
    }
    DisplayList& list = displayList();
    std::vector<ChipElement*> changed;
    for (int id : elementIds) {
        m_index.visit(id, [&](ChipElement* element) {
            list.takeOver(m_index, *element);
            changed.push_back(element);
        });
    }
    synchronise(shownAmong(changed));
    repaint(changed, nullptr);
}

void ZelGraphicsScene::repaintAllElements()
{
    if (m_index.isSmall())
        synchronise(shownAmong(m_index.inPaintOrder()));
    for (ZelGraphicsView* view : chipViews())
        view->repaintAll();
}

QList<ZelGraphicsView*> ZelGraphicsScene::chipViews() const
{
    QList<ZelGraphicsView*> chipViews;
    const QList<QGraphicsView*> all = views();
    for (QGraphicsView* view : all) {
        if (auto* chipView = qobject_cast<ZelGraphicsView*>(view))
            chipViews.append(chipView);
        else
            view->viewport()->update(); // it paints the items one by one and knows of no states
    }
    return chipViews;
}

QList<QGraphicsItem*> ZelGraphicsScene::itemsOf(int elementId)
{
    QList<QGraphicsItem*> items;
    for (ChipElement* element : m_index.elements(elementId))
        items.append(element->graphicsItem());
    return items;
}

QGraphicsItem* ZelGraphicsScene::topmostItemAt(const QPointF& point, const QTransform& sceneToViewport)
{
    // Of what a host has just added Qt would tell at the next turn of the event loop.
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
    return isPlain() ? picking::topmostItem(displayList(), point) : itemAt(point, sceneToViewport);
}

std::vector<int> ZelGraphicsScene::elementsTouching(const QRectF& area)
{
    hearOfChanges();
    if (isPlain())
        return picking::idsTouching(displayList(), area, m_index.hasPending());
    std::vector<int> ids;
    const QList<QGraphicsItem*> found = items(area, Qt::IntersectsItemShape);
    for (const QGraphicsItem* item : found) {
        if (const ZELGraphicItemAttribute* attribute = attributeOf(*item))
            ids.push_back(attribute->itemId);
    }
    return ids;
}

DisplayList& ZelGraphicsScene::displayList()
{
    m_displayList->update(m_index);
    return *m_displayList;
}

// `painted`: a view that is about to paint them.
void ZelGraphicsScene::repaint(const std::vector<ChipElement*>& elements, ZelGraphicsView* painted)
{
    if (elements.empty())
        return;
    if (!isPlain()) {
        repaintByItems(elements);
        return;
    }
    const unsigned before = m_displayList->version();
    const DisplayList& list = displayList();
    if (list.version() != before) {
        repaintAllElements(); // also where they were
        return;
    }
    std::vector<int> places;
    places.reserve(elements.size());
    for (const ChipElement* element : elements)
        places.push_back(list.placeOf(*element));
    for (ZelGraphicsView* view : chipViews()) {
        if (view == painted)
            view->forgetPlaces(places);
        else
            view->repaintPlaces(places);
    }
}

// Where a host put an element, and what it put around it, only Qt knows.
void ZelGraphicsScene::repaintByItems(const std::vector<ChipElement*>& elements)
{
    for (ChipElement* element : elements)
        element->graphicsItem()->update();
    forgetPictures();
}

void ZelGraphicsScene::forgetPictures()
{
    for (ZelGraphicsView* view : chipViews())
        view->forgetPicture();
}

// Items that a host adds, and elements that it moves, tell the scene of it and no one else.
void ZelGraphicsScene::lookForStrangers(const QList<QRectF>& areas)
{
    const bool wasPlain = m_strangers.isEmpty();
    // Of an item that left, Qt tells no more than that everything may look different.
    const bool isEverything
        = std::any_of(areas.begin(), areas.end(), [this](const QRectF& area) { return area.contains(sceneRect()); });
    if (isEverything) {
        m_strangers = strangersAmong(items());
        for (ZelGraphicsView* view : chipViews())
            view->viewport()->update(); // Qt repaints the scene's rect only: what left may have lain beside it
    } else {
        Strangers found;
        for (const QRectF& area : areas)
            found.insert(strangersAmong(items(area, Qt::IntersectsItemBoundingRect)));
        if (areAllKnownAmong(found, areas))
            m_strangers.insert(found);
        else
            m_strangers = strangersAmong(items());
    }
    if (wasPlain && !m_strangers.isEmpty())
        repaintAllElements();
}

// The visible ones, with where they lie.
ZelGraphicsScene::Strangers ZelGraphicsScene::strangersAmong(const QList<QGraphicsItem*>& items)
{
    Strangers strangers;
    for (QGraphicsItem* item : items) {
        if (isStranger(item) && item->isVisible())
            strangers.insert(item, item->sceneBoundingRect());
    }
    return strangers;
}

// False when one that was known to lie in these areas was not found in them: it may be gone, and is not to be looked
// at.
bool ZelGraphicsScene::areAllKnownAmong(const Strangers& found, const QList<QRectF>& areas) const
{
    for (auto known = m_strangers.cbegin(); known != m_strangers.cend(); ++known) {
        const QRectF place = grown(known.value(), 1);
        const auto touches = [&place](const QRectF& area) { return area.intersects(place); };
        if (!found.contains(known.key()) && std::any_of(areas.begin(), areas.end(), touches))
            return false;
    }
    return true;
}

bool ZelGraphicsScene::isStranger(QGraphicsItem* item)
{
    auto* element = dynamic_cast<ChipElement*>(item);
    if (!element || !element->attribute())
        return true;
    m_index.reconsider(element);
    return false;
}

// Qt tells of all changes together, at the next turn of the event loop. What came before is told now.
void ZelGraphicsScene::hearOfChanges()
{
    QCoreApplication::sendPostedEvents(this, QEvent::MetaCall);
}

// A host's change must not be taken for one of these.
void ZelGraphicsScene::beginOwnChanges()
{
    hearOfChanges();
    disconnect(this, &QGraphicsScene::changed, this, &ZelGraphicsScene::lookForStrangers);
}

// Also what the scene does once for each new item: it would wait for the next turn of the event loop, and a window that
// is closed before would take a time quadratic in the number of items.
void ZelGraphicsScene::endOwnChanges()
{
    hearOfChanges();
    connect(this, &QGraphicsScene::changed, this, &ZelGraphicsScene::lookForStrangers);
}

void ZelGraphicsScene::helpEvent(QGraphicsSceneHelpEvent* event)
{
    const QList<QGraphicsItem*> found = items(event->scenePos());
    for (QGraphicsItem* item : found) {
        if (auto* element = dynamic_cast<ChipElement*>(item))
            element->updateToolTip();
    }
    QGraphicsScene::helpEvent(event);
}

void ZelGraphicsScene::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    synchroniseAt(event->scenePos());
    QGraphicsScene::dragEnterEvent(event);
}

void ZelGraphicsScene::dragMoveEvent(QGraphicsSceneDragDropEvent* event)
{
    synchroniseAt(event->scenePos());
    database().highlightProbPlaceItems();
    database().hoverText().moveTo(event->screenPos() + HoverTextOffset);
    QGraphicsScene::dragMoveEvent(event);
}

void ZelGraphicsScene::dragLeaveEvent(QGraphicsSceneDragDropEvent* event)
{
    database().hoverText().hide();
    QGraphicsScene::dragLeaveEvent(event);
}

void ZelGraphicsScene::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    database().clearHighlightedProbPlaceItems();
    database().hoverText().hide();
    QGraphicsScene::dropEvent(event);
}

void ZelGraphicsScene::mouseMoveEvent(QGraphicsSceneMouseEvent* event)
{
    QGraphicsScene::mouseMoveEvent(event);
}

} // namespace mirn::zelchipview
