// SPDX-License-Identifier: MIT
#include "chipview/drawingloader.h"

#include "chipview/elementfactory.h"
#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/attributeregistry.h"
#include "graphics/sceneelements.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zelprogress.h"

#include <QGraphicsView>
#include <QMetaObject>

#include <algorithm>
#include <iterator>
#include <memory>

namespace mirn::zelchipview {

namespace {

constexpr std::size_t RecordsPerStep = 1024;
constexpr double MakingShare = 0.5; // share of the loading time before items are added to the scene

// Reports that `done` of `count` records have passed the stage that takes a share of the loading time and starts at
// another one. Returns false if the load is cancelled.
bool step(double before, double share, std::size_t done, std::size_t count)
{
    const double part = static_cast<double>(done) / static_cast<double>(std::max<std::size_t>(count, 1));
    return zelprogress::step(zelprogress::BUILDING_VIEW, before + share * std::min(part, 1.0));
}

// Suspends the painting of the views. A host may process paint events between steps, and painting half a drawing again
// and again would take longer than loading it.
class QuietViews
{
public:
    explicit QuietViews(const QGraphicsScene& scene)
    {
        const QList<QGraphicsView*> views = scene.views();
        std::copy_if(views.begin(), views.end(), std::back_inserter(m_views),
            [](const QGraphicsView* view) { return view->updatesEnabled(); });
        for (QGraphicsView* view : m_views)
            view->setUpdatesEnabled(false);
    }
    ~QuietViews()
    {
        for (QGraphicsView* view : m_views)
            view->setUpdatesEnabled(true);
    }
    QuietViews(const QuietViews&) = delete;
    QuietViews& operator=(const QuietViews&) = delete;

private:
    std::vector<QGraphicsView*> m_views;
};

} // namespace

DrawingLoader::DrawingLoader(ZelGraphicsScene* scene)
    : m_scene(scene)
{ }

bool DrawingLoader::load(const SVGParser& parser)
{
    const QuietViews quiet(*m_scene);
    m_items.clear();
    m_replaced.clear();
    m_scene->makeAllItems(); // of an earlier load
    const bool isFirst = m_scene->elementCount() == 0 && ZELChipViewDatabase::getInstance()->attributes().isEmpty();
    if (m_scene->areItemsOnDemand() && isFirst && listElements(parser))
        return !m_isCancelled;
    m_scene->elements().suspendForeignItemDetection();
    const bool isLoaded = makeElements(parser) && addItems();
    m_scene->elements().resumeForeignItemDetection();
    if (!isLoaded) {
        rollBack();
        return false;
    }
    for (std::unique_ptr<QGraphicsItem>& item : m_items)
        item.release(); // owned by the scene
    m_items.clear();
    // Items of an earlier load still paint from the attributes that were replaced, so these live as long as the scene.
    for (const auto& [number, replaced] : m_replaced)
        replaced->setParent(m_scene);
    return true;
}

// The parser's records are all that there is of an element until somebody asks for its attribute or its item. Returns
// false if the items have to be made at once: the parser does not keep its records, or some of them are not drawn, so
// that load numbers and records would differ.
bool DrawingLoader::listElements(const SVGParser& parser)
{
    const SVGParser::Access recordAt = parser.keptGraphicItems();
    if (!recordAt)
        return false;
    SceneElements& elements = m_scene->elements();
    const std::size_t count = parser.graphicItemCount();
    std::size_t visited = 0;
    bool areAllDrawn = true;
    elements.beginLatent(count);
    parser.visitGraphicItems([&](const zel_SingleGraphItem& record) {
        m_isCancelled = visited++ % RecordsPerStep == 0 && !step(0.0, 1.0, visited, count);
        areAllDrawn = areAllDrawn && !m_isCancelled && elements.addLatent(record);
        return areAllDrawn;
    });
    if (!areAllDrawn || visited != count) {
        elements.dropLatent();
        return m_isCancelled;
    }
    provideElements(recordAt, static_cast<int>(count));
    return true;
}

void DrawingLoader::provideElements(const SVGParser::Access& recordAt, int count)
{
    ZELChipViewDatabase::getInstance()->attributes().makeOnDemand(count, [recordAt](int number) {
        std::unique_ptr<ZELGraphicItemAttribute> attribute;
        recordAt(static_cast<std::size_t>(number) - 1, [&](const zel_SingleGraphItem& record) {
            attribute = makeAttribute(record, number);
            return true;
        });
        return attribute;
    });
    m_scene->elements().finishLatent([](int number) -> QGraphicsItem* {
        const ZELGraphicItemAttribute* attribute = ZELChipViewDatabase::getInstance()->attributes().find(number);
        if (!attribute)
            return nullptr; // the controller is being taken down
        QGraphicsItem* item = makeItem(attribute->kind, number);
        item->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, number);
        item->setZValue(number);
        return item;
    });
}

bool DrawingLoader::makeElements(const SVGParser& parser)
{
    const std::size_t count = parser.graphicItemCount();
    std::size_t visited = 0;
    bool goesOn = true;
    m_items.reserve(count);
    parser.visitGraphicItems([&](const zel_SingleGraphItem& record) {
        if (visited++ % RecordsPerStep == 0)
            goesOn = step(0.0, MakingShare, visited, count);
        const int number = static_cast<int>(m_items.size()) + 1;
        if (std::unique_ptr<ZELGraphicItemAttribute> attribute = goesOn ? makeAttribute(record, number) : nullptr)
            addElement(record.kind, attribute.release());
        return goesOn;
    });
    numberItems();
    return goesOn;
}

void DrawingLoader::addElement(int kind, ZELGraphicItemAttribute* attribute)
{
    AttributeRegistry& attributes = ZELChipViewDatabase::getInstance()->attributes();
    const int number = attribute->sequence;
    if (ZELGraphicItemAttribute* replaced = attributes.find(number))
        m_replaced.emplace(number, replaced);
    attributes.set(number, attribute);
    m_items.emplace_back(makeItem(kind, number));
}

// Qt keeps the data of all items in one table; filling it in one go takes a quarter of the time that it takes between
// other work.
void DrawingLoader::numberItems()
{
    int number = 0;
    for (const std::unique_ptr<QGraphicsItem>& item : m_items) {
        item->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, ++number);
        item->setZValue(number);
    }
}

bool DrawingLoader::addItems()
{
    for (std::size_t i = 0; i < m_items.size(); ++i) {
        if (i % RecordsPerStep == 0 && !step(MakingShare, 1.0 - MakingShare, i, m_items.size()))
            return false;
        m_scene->addItem(m_items[i].get());
    }
    return true;
}

// Restores the state before the load.
void DrawingLoader::rollBack()
{
    AttributeRegistry& attributes = ZELChipViewDatabase::getInstance()->attributes();
    const int count = static_cast<int>(m_items.size());
    m_items.clear();
    for (int number = 1; number <= count; ++number) {
        const auto replaced = m_replaced.find(number);
        delete attributes.find(number); // owned by the registry, which gets the previous one back
        attributes.set(number, replaced == m_replaced.end() ? nullptr : replaced->second);
    }
}

} // namespace mirn::zelchipview
