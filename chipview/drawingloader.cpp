// SPDX-License-Identifier: MIT
#include "chipview/drawingloader.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/attributeregistry.h"
#include "graphics/sceneelements.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zellineattribute.h"
#include "graphics/zellineitem.h"
#include "graphics/zelpolygonattribute.h"
#include "graphics/zelpolygonitem.h"
#include "graphics/zelrectattribute.h"
#include "graphics/zelrectitem.h"
#include "graphics/zeltextattribute.h"
#include "graphics/zeltextitem.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelprogress.h"

#include <QGraphicsView>
#include <QMetaObject>

#include <algorithm>
#include <iterator>
#include <memory>

namespace mirn::zelchipview {

namespace {

using AttributePointer = std::unique_ptr<ZELGraphicItemAttribute>;

AttributePointer newAttribute(const zel_Line& line)
{
    return std::make_unique<ZELLineAttribute>(line.x1, line.y1, line.x2, line.y2, line.strokeColor, line.strokeWidth);
}

AttributePointer newAttribute(const zel_Rect& rect)
{
    return std::make_unique<ZELRectAttribute>(
        rect.x, rect.y, rect.width, rect.height, rect.fillColor, rect.strokeColor, rect.strokeWidth, rect.text);
}

AttributePointer newAttribute(const zel_Polygon& polygon)
{
    return std::make_unique<ZELPolygonAttribute>(
        polygon.points, polygon.fillColor, polygon.strokeColor, polygon.strokeWidth, polygon.text);
}

AttributePointer newAttribute(const zel_Text& text)
{
    std::vector<tspan> spans = text.spans;
    return std::make_unique<ZELTextAttribute>(
        text.text, text.x, text.y, text.fontSize, text.fontFamily, text.fillColor, text.rotation, spans, 0.0, 0.0);
}

template <typename Record> AttributePointer attributeFor(const zel_SingleGraphItem& record)
{
    const auto* typed = dynamic_cast<const Record*>(&record);
    return typed ? newAttribute(*typed) : nullptr;
}

// Returns null for a record that is not drawn.
AttributePointer attributeOf(const zel_SingleGraphItem& record)
{
    switch (record.kind) {
    case ZEL_GRAPHIC_LINE:
        return attributeFor<zel_Line>(record);
    case ZEL_GRAPHIC_RECT:
        return attributeFor<zel_Rect>(record);
    case ZEL_GRAPHIC_POLYGON:
        return attributeFor<zel_Polygon>(record);
    case ZEL_GRAPHIC_TEXT:
        return attributeFor<zel_Text>(record);
    default:
        return nullptr;
    }
}

QGraphicsItem* newItem(int kind, int loadNumber)
{
    switch (kind) {
    case ZEL_GRAPHIC_LINE:
        return new ZELLineItem(loadNumber);
    case ZEL_GRAPHIC_RECT:
        return new ZELRectItem(loadNumber);
    case ZEL_GRAPHIC_POLYGON:
        return new ZELPolygonItem(loadNumber);
    default:
        return new ZELTextItem(loadNumber);
    }
}

constexpr std::size_t RecordsPerStep = 1024;
constexpr double MakingShare = 0.5; // share of the loading time before items are added to the scene

// Reports that `done` of `count` records have passed the stage that starts at the share `before`. Returns false if the
// load is cancelled.
bool step(double before, std::size_t done, std::size_t count)
{
    const double part = static_cast<double>(done) / static_cast<double>(std::max<std::size_t>(count, 1));
    return zelprogress::step(zelprogress::BUILDING_VIEW, before + MakingShare * std::min(part, 1.0));
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

bool DrawingLoader::makeElements(const SVGParser& parser)
{
    const std::size_t count = parser.graphicItemCount();
    std::size_t visited = 0;
    bool goesOn = true;
    m_items.reserve(count);
    parser.visitGraphicItems([&](const zel_SingleGraphItem& record) {
        if (visited++ % RecordsPerStep == 0)
            goesOn = step(0.0, visited, count);
        if (AttributePointer attribute = goesOn ? attributeOf(record) : nullptr)
            addElement(record, attribute.release());
        return goesOn;
    });
    numberItems();
    return goesOn;
}

void DrawingLoader::addElement(const zel_SingleGraphItem& record, ZELGraphicItemAttribute* attribute)
{
    AttributeRegistry& attributes = ZELChipViewDatabase::getInstance()->attributes();
    const int number = static_cast<int>(m_items.size()) + 1;
    attribute->setAttribute(record);
    attribute->sequence = number;
    if (ZELGraphicItemAttribute* replaced = attributes.find(number))
        m_replaced.emplace(number, replaced);
    attributes.set(number, attribute);
    m_items.emplace_back(newItem(record.kind, number));
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
        if (i % RecordsPerStep == 0 && !step(MakingShare, i, m_items.size()))
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
