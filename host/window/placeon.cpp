// SPDX-License-Identifier: MIT
#include "host/window/placeon.h"

#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/dialogs/messagebox.h"
#include "host/sites/sitecursor.h"
#include "host/sites/siteplaces.h"
#include "host/widgets/sitelist.h"

#include <QGraphicsItem>
#include <QTreeWidget>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace mirn::zelchip {

using zelchipview::ZELChipViewDatabase;
using zelengine::Resource;
using zelengine::ResourceType;
using zelengine::Site;

namespace {

constexpr QSize SmallestList(360, 420); // pixels

double distanceToNearest(const std::vector<QPointF>& origins, const QGraphicsItem* item)
{
    double least = std::numeric_limits<double>::infinity();
    if (!item)
        return least; // a site that is not in the drawing comes last
    const QPointF middle = item->sceneBoundingRect().center();
    for (const QPointF& origin : origins)
        least = std::min(least, std::hypot(middle.x() - origin.x(), middle.y() - origin.y()));
    return least;
}

} // namespace

PlaceOn::PlaceOn(zelchipview::ZelGraphicsView* view, zelchipview::ZelGraphicsScene* scene, QTreeWidget* tree,
    const zelengine::ReferenceEngine& engine, SiteCursor* cursor)
    : QObject(view)
    , m_view(view)
    , m_scene(scene)
    , m_tree(tree)
    , m_engine(engine)
    , m_cursor(cursor)
{ }

// The selected row, which the component's commands work on; after the tree was refilled only the current one is known.
void PlaceOn::openForRow()
{
    const QList<QTreeWidgetItem*> selected = m_tree->selectedItems();
    const QTreeWidgetItem* row = selected.isEmpty() ? m_tree->currentItem() : selected.first();
    open(row ? row->data(0, zelchipview::RESOURCENAME).toString() : QString());
}

void PlaceOn::open(const QString& resource)
{
    const QString problem = refusal(resource);
    if (!problem.isEmpty()) {
        Q_EMIT refused(problem);
        return;
    }
    const int index = m_engine.design().find(resource);
    std::vector<QPointF> origins = placedNeighbours(index);
    const QString order = origins.empty()
        ? tr("The nearest to the middle of what the drawing shows come first.")
        : tr("The nearest to what is placed of %1 come first.").arg(resource.section(QLatin1Char('/'), 0, -2));
    if (origins.empty())
        origins.push_back(m_view->mapToScene(m_view->viewport()->rect().center()));
    SiteList::Host host;
    host.reason = [this, resource](int site) { return reason(resource, site); };
    host.show = [this](const SiteChoice* site) { show(site); };
    host.place = [this, resource](int site) { return place(resource, site); };
    // A child of the tree, so that it goes with the project.
    auto* list = new SiteList(resource, order, choices(index, origins), std::move(host), m_tree);
    list->resize(m_tree->size().expandedTo(SmallestList));
    if (m_tree->isVisible()) // the drawing beside it stays visible
        list->move(m_tree->mapToGlobal(QPoint()));
    list->open();
}

QString PlaceOn::refusal(const QString& resource) const
{
    const int index = m_engine.design().find(resource);
    if (index < 0)
        return tr("No resource is chosen in the tree.");
    const Resource& chosen = m_engine.design().resource(index);
    if (chosen.type == ResourceType::Folder)
        return tr("%1 only groups others and cannot be placed itself.").arg(resource);
    const QString reason = zelengine::lockrules::refusalToLeave(m_engine.device(), chosen).sentence();
    return reason.isEmpty() ? QString() : reason + QLatin1Char('.');
}

std::vector<QPointF> PlaceOn::placedNeighbours(int resource) const
{
    const zelengine::Design& design = m_engine.design();
    const int parent = design.resource(resource).parent;
    std::vector<QPointF> middles;
    for (int sibling : parent < 0 ? design.topLevel() : design.resource(parent).children) {
        const int site = sibling == resource ? -1 : design.resource(sibling).site;
        // Negative ids are those of elements without one.
        const QGraphicsItem* item = site < 0 ? nullptr : outlineOf(*m_scene, site);
        if (item)
            middles.push_back(item->sceneBoundingRect().center());
    }
    return middles;
}

std::vector<SiteChoice> PlaceOn::choices(int resource, const std::vector<QPointF>& origins) const
{
    const std::vector<int> legalIds = m_engine.rules().sitesFor(resource);
    const std::set<int> legal(legalIds.begin(), legalIds.end());
    const ResourceType type = m_engine.design().resource(resource).type;
    std::vector<SiteChoice> sites;
    for (const Site& site : m_engine.device().sites()) {
        SiteChoice choice;
        choice.id = site.id;
        choice.name = site.name;
        choice.kind = m_engine.device().kindOf(site).title;
        choice.distance = distanceToNearest(origins, outlineOf(*m_scene, site.id));
        if (m_engine.device().accepts(site, type))
            choice.fit = legal.count(site.id) > 0 ? SiteChoice::Fit::Legal : SiteChoice::Fit::Refused;
        sites.push_back(std::move(choice));
    }
    return sites;
}

QString PlaceOn::reason(const QString& resource, int site) const
{
    const int index = m_engine.design().find(resource); // a script may have removed it meanwhile
    if (index < 0)
        return tr("There is no resource %1 any more.").arg(resource);
    return asSentence(m_engine.rules().propose(index, site).refusal.sentence());
}

QString PlaceOn::place(const QString& resource, int site) const
{
    const QString problem = reason(resource, site);
    if (!problem.isEmpty())
        return problem;
    const bool isPlaced = ZELChipViewDatabase::getInstance()->place(resource, QString::number(site)) != 0;
    return isPlaced ? QString() : tr("It was not placed. The console says why.");
}

void PlaceOn::show(const SiteChoice* site) const
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    if (site && site->isLegal())
        database->highlightedIds().assign({site->id});
    else
        database->clearHighlightedProbPlaceItems();
    if (site)
        m_cursor->goTo(site->id);
    else
        m_cursor->hide();
}

} // namespace mirn::zelchip
