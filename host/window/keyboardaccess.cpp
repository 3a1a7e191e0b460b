// SPDX-License-Identifier: MIT
#include "host/window/keyboardaccess.h"

#include "chipview/zelchipgui.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "host/console/consoledock.h"
#include "host/design/designeditor.h"
#include "host/project/projectsession.h"
#include "host/sites/sitetext.h"
#include "host/widgets/findbox.h"
#include "host/window/autoplace.h"
#include "host/window/comparedock.h"
#include "host/window/drawingarea.h"
#include "host/window/problemsdock.h"
#include "host/window/rowmenu.h"
#include "host/window/taborder.h"
#include "planning/placeon.h"
#include "planning/sitecursor.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QDockWidget>
#include <QMenu>

#include <algorithm>
#include <utility>
#include <vector>

namespace mirn::zelchip {

using zelchipview::PlaceOn;
using zelchipview::SiteCursor;

namespace {

bool hasWordBeginningWith(const QString& text, const QString& sought)
{
    const auto at = text.indexOf(sought, 0, Qt::CaseInsensitive);
    return at == 0 || (at > 0 && text.contains(QLatin1Char(' ') + sought, Qt::CaseInsensitive));
}

} // namespace

KeyboardAccess::KeyboardAccess(DrawingArea& area, QAction* placeOn, AutoPlace* autoPlace, ConsoleDock* console,
    ProblemsDock* problems, CompareDock* comparison)
    : QObject(area.graphicsView())
    , m_area(area)
    , m_engine(area.session().editor().engine())
    , m_autoPlace(autoPlace)
{
    nameWidgets();
    makeCursorAndList(placeOn);
    makeRowMenu();
    connectFindBox();
    orderTabs(console, problems, comparison);
}

void KeyboardAccess::nameWidgets()
{
    m_area.tree()->setAccessibleName(tr("Resources"));
    m_area.table()->setAccessibleName(tr("Usage"));
    m_area.table()->setTabKeyNavigation(false); // else Tab never leaves it
    m_area.graphicsView()->setAccessibleName(tr("Drawing"));
}

void KeyboardAccess::makeCursorAndList(QAction* placeOn)
{
    SiteCursor::Host host;
    host.describe = [this](int id) { return describeSite(m_engine, id); };
    host.sites = [this] {
        std::vector<int> ids;
        for (const zelengine::Site& site : m_engine.device().sites())
            ids.push_back(site.id);
        return ids;
    };
    auto* cursor = new SiteCursor(m_area.graphicsView(), m_area.scene(), std::move(host)); // child of the view
    connect(cursor, &SiteCursor::moved, this, [this](const QPointF& middle, const QString& description) {
        Q_EMIT told({}); // an earlier sentence would hide this one
        Q_EMIT pointed(middle, description);
    });
    connect(cursor, &SiteCursor::refused, this, &KeyboardAccess::told);
    m_placeOn = new PlaceOn(
        m_area.graphicsView(), m_area.scene(), m_area.tree(), *m_area.session().engine(), cursor); // child of the view
    connect(m_placeOn, &PlaceOn::refused, this, &KeyboardAccess::told);
    connect(placeOn, &QAction::triggered, m_placeOn, &PlaceOn::openForRow);
}

void KeyboardAccess::makeRowMenu()
{
    m_rowMenu = new RowMenu(m_area.tree()); // child of the tree
    connect(m_rowMenu, &RowMenu::filling, this, [this](QMenu* menu, const QString& resource) {
        QAction* action = menu->addAction(tr("Place on..."));
        action->setEnabled(m_placeOn->refusal(resource).isEmpty());
        connect(action, &QAction::triggered, m_placeOn, [this, resource] { m_placeOn->open(resource); });
        QAction* automatic = menu->addAction(tr("Place Automatically"));
        automatic->setEnabled(m_autoPlace->hasUnplaced(resource));
        connect(automatic, &QAction::triggered, m_autoPlace, [this, resource] { m_autoPlace->placeBelow(resource); });
    });
}

void KeyboardAccess::connectFindBox()
{
    FindBox* box = m_area.findBox();
    box->setMatcher([this](const QString& resource, const QString& sought) { return matches(resource, sought); });
    connect(box, &FindBox::notFound, this, &KeyboardAccess::told);
    connect(box, &FindBox::chosen, this, &KeyboardAccess::sayWhetherPlaced);
}

// The kind has the name of the files and those that the sites for it have.
bool KeyboardAccess::matches(const QString& resource, const QString& sought) const
{
    const int index = m_engine.design().find(resource);
    if (index < 0)
        return false;
    const zelengine::Resource& found = m_engine.design().resource(index);
    if (hasWordBeginningWith(zelengine::nameOf(found.type), sought))
        return true;
    const zelengine::Site* site = m_engine.device().site(found.site);
    if (site && site->name.contains(sought, Qt::CaseInsensitive))
        return true;
    const auto& kinds = m_engine.device().kinds();
    return std::any_of(kinds.begin(), kinds.end(), [&](const zelengine::SiteKind& kind) {
        const auto& accepted = kind.accepts;
        return std::find(accepted.begin(), accepted.end(), found.type) != accepted.end()
            && hasWordBeginningWith(kind.title, sought);
    });
}

void KeyboardAccess::sayWhetherPlaced()
{
    const QString name = m_area.tree()->getResourceName(m_area.tree()->currentItem());
    const zelengine::Design& design = m_engine.design();
    const int index = design.find(name);
    const std::vector<int> branch = index < 0 ? std::vector<int>() : design.subtree(index);
    const bool isPlaced
        = std::any_of(branch.begin(), branch.end(), [&](int part) { return design.resource(part).site >= 0; });
    Q_EMIT told(isPlaced ? QString() : tr("%1 is not placed.").arg(name));
}

void KeyboardAccess::orderTabs(ConsoleDock* console, ProblemsDock* problems, CompareDock* comparison)
{
    QList<QWidget*> widgets{
        m_area.findBox(), m_area.tree(), m_area.table(), m_area.graphicsView(), console->output(), console->input()};
    const auto order = [this, widgets, problems, comparison] {
        QList<QWidget*> shown = widgets;
        // Where they have never been shown, they have no place yet.
        if (problems->isVisible())
            shown.append(problems->list());
        if (comparison->isVisible())
            shown.append(comparison->list());
        orderTabsByEye(shown, m_area.graphicsView()->window());
    };
    QList<QDockWidget*> docks = m_area.chipView()->findChildren<QDockWidget*>();
    docks.append({console, problems, comparison});
    for (QDockWidget* dock : std::as_const(docks)) {
        // Queued, because the dock has not come to its place yet.
        connect(dock, &QDockWidget::dockLocationChanged, this, order, Qt::QueuedConnection);
        connect(dock, &QDockWidget::visibilityChanged, this, order, Qt::QueuedConnection);
    }
}

} // namespace mirn::zelchip
