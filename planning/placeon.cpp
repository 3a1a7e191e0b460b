// SPDX-License-Identifier: MIT
#include "planning/placeon.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/planengine.h"
#include "planning/sentence.h"
#include "planning/sitecursor.h"
#include "planning/sitelist.h"
#include "planning/sitelistmodel.h"
#include "planning/siteplaces.h"
#include "platform/contract/zeltext.h"

#include <QGraphicsItem>
#include <QScreen>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

namespace mirn::zelchipview {

namespace {

constexpr QSize SmallestList(360, 420); // pixels, on a screen that has room for it
constexpr QSize WindowFrame(16, 48); // pixels that the desktop may need around the list

// The list covers the tree, so that the drawing beside it stays visible, as far as the screen has room.
void putOver(QDialog* list, const QWidget* tree)
{
    const QRect room = tree->screen()->availableGeometry();
    list->resize(tree->size().expandedTo(SmallestList).boundedTo(room.size() - WindowFrame));
    if (!tree->isVisible())
        return;
    const QPoint corner = tree->mapToGlobal(QPoint());
    const QSize spare = room.size() - WindowFrame - list->size();
    list->move(std::max(room.left(), std::min(corner.x(), room.left() + spare.width())),
        std::max(room.top(), std::min(corner.y(), room.top() + spare.height())));
}

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

PlaceOn::PlaceOn(
    ZelGraphicsView* view, ZelGraphicsScene* scene, QTreeWidget* tree, zelchipengine& engine, SiteCursor* cursor)
    : QObject(view)
    , m_view(view)
    , m_scene(scene)
    , m_tree(tree)
    , m_engine(engine)
    , m_cursor(cursor ? cursor : new SiteCursor(view, scene, engine)) // child of the view
{ }

// The selected row, which the component's commands work on; after the tree was refilled only the current one is known.
void PlaceOn::openForRow()
{
    const QList<QTreeWidgetItem*> selected = m_tree->selectedItems();
    const QTreeWidgetItem* row = selected.isEmpty() ? m_tree->currentItem() : selected.first();
    open(row ? row->data(0, RESOURCENAME).toString() : QString());
}

void PlaceOn::open(const QString& resource)
{
    const QString problem = refusal(resource);
    if (!problem.isEmpty()) {
        Q_EMIT refused(problem);
        return;
    }
    std::vector<QPointF> origins = placedNeighbours(resource);
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
    auto* list = new SiteList(resource, order, choices(toEngineText(resource), origins), std::move(host), m_tree);
    putOver(list, m_tree);
    list->open();
}

QString PlaceOn::refusal(const QString& resource) const
{
    if (resource.isEmpty())
        return tr("No resource is chosen in the tree.");
    const std::string name = toEngineText(resource);
    const QString reason = asSentence(fromEngineText(planEngineOf(m_engine).refusalToPlace(&name)));
    const bool isWhole = reason.isEmpty() || reason.endsWith(QLatin1Char('.'));
    return isWhole ? reason : QString(reason + QLatin1Char('.'));
}

QTreeWidgetItem* PlaceOn::rowOf(const QString& resource) const
{
    for (QTreeWidgetItemIterator row(m_tree); *row; ++row) {
        if ((*row)->data(0, RESOURCENAME).toString() == resource)
            return *row;
    }
    return nullptr;
}

std::vector<QPointF> PlaceOn::placedNeighbours(const QString& resource) const
{
    QTreeWidgetItem* row = rowOf(resource);
    if (!row)
        return {};
    QTreeWidgetItem* parent = row->parent() ? row->parent() : m_tree->invisibleRootItem();
    std::vector<QPointF> middles;
    for (int i = 0; i < parent->childCount(); ++i) {
        const std::string sibling = toEngineText(parent->child(i)->data(0, RESOURCENAME).toString());
        const int site = parent->child(i) == row ? -1 : planEngineOf(m_engine).siteOf(&sibling);
        // Negative ids are those of elements without one.
        const QGraphicsItem* item = site < 0 ? nullptr : outlineOf(*m_scene, site);
        if (item)
            middles.push_back(item->sceneBoundingRect().center());
    }
    return middles;
}

std::vector<SiteChoice> PlaceOn::choices(const std::string& resource, const std::vector<QPointF>& origins) const
{
    zelplanengine& engine = planEngineOf(m_engine);
    const std::vector<int> legalIds = engine.sitesFor(&resource);
    const std::vector<int> kindIds = engine.sitesOfKind(&resource);
    const std::set<int> legal(legalIds.begin(), legalIds.end());
    const std::set<int> ofKind(kindIds.begin(), kindIds.end());
    std::vector<SiteChoice> choices;
    for (const zelsite& site : engine.sites()) {
        SiteChoice choice;
        choice.id = site.id;
        choice.name = fromEngineText(site.name);
        choice.kind = fromEngineText(site.kind);
        choice.distance = distanceToNearest(origins, outlineOf(*m_scene, site.id));
        if (legal.count(site.id) > 0)
            choice.fit = SiteChoice::Fit::Legal;
        else if (ofKind.count(site.id) > 0)
            choice.fit = SiteChoice::Fit::Refused;
        choices.push_back(std::move(choice));
    }
    return choices;
}

QString PlaceOn::reason(const QString& resource, int site) const
{
    const std::string name = toEngineText(resource);
    if (m_engine.getResourceType(&name) == ZEL_RESOURCE_UNKNOWN) // a script may have removed it meanwhile
        return tr("There is no resource %1 any more.").arg(resource);
    const std::string id = std::to_string(site);
    return asSentence(fromEngineText(m_engine.refusalReason(&name, &id)));
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

} // namespace mirn::zelchipview
