// SPDX-License-Identifier: MIT
#include "planning/sitecursor.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/chipelement.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "graphics/zelgraphicsview.h"
#include "planning/planengine.h"
#include "planning/siteframe.h"
#include "platform/contract/zeltext.h"

#include <QGraphicsRectItem>
#include <QKeyEvent>
#include <QScrollBar>

#include <algorithm>
#include <optional>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int VisibleMargin = 20; // pixels around the site that are scrolled into view with it
constexpr int PointsPerSide = 9; // where a site is tried, in each direction

std::optional<Direction> directionOf(int key)
{
    switch (key) {
    case Qt::Key_Left:
        return Direction::Left;
    case Qt::Key_Right:
        return Direction::Right;
    case Qt::Key_Up:
        return Direction::Up;
    case Qt::Key_Down:
        return Direction::Down;
    default:
        return std::nullopt;
    }
}

std::vector<int> idsOf(const std::vector<zelsite>& sites)
{
    std::vector<int> ids;
    for (const zelsite& site : sites)
        ids.push_back(site.id);
    return ids;
}

QString describeSite(zelplanengine& engine, int id)
{
    const std::vector<zelsite> sites = engine.sites();
    const auto site = std::find_if(sites.begin(), sites.end(), [id](const zelsite& other) { return other.id == id; });
    if (site == sites.end())
        return {};
    const std::string idText = std::to_string(id);
    const QString occupant = fromEngineText(engine.occupant(&idText));
    const QStringList parts{fromEngineText(site->name), fromEngineText(site->kind),
        occupant.isEmpty() ? SiteCursor::tr("free") : SiteCursor::tr("occupied by %1").arg(occupant)};
    return parts.join(QStringLiteral(", "));
}

// A menu or a dialog, which may be about the site with the cursor, returns the focus.
bool isForAWhile(Qt::FocusReason reason)
{
    return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
}

bool isByTab(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason;
}

bool hasRange(const QScrollBar* bar)
{
    return bar->minimum() < bar->maximum();
}

// Returns the id of the element whose settings a double click opens at a point of the scene.
int settingsElementAt(ZelGraphicsScene& scene, const QPointF& point)
{
    scene.makeItemsIn(QRectF(point, QSizeF(0, 0)));
    const QGraphicsItem* highest = nullptr;
    const QList<QGraphicsItem*> items = scene.items(point);
    for (const QGraphicsItem* item : items) {
        if (item->type() == QGraphicsRectItem::Type && (!highest || item->zValue() > highest->zValue()))
            highest = item;
    }
    const auto* element = dynamic_cast<const ChipElement*>(highest);
    return element && element->attribute() ? element->attribute()->itemId : -1;
}

// Returns the parts of a side, the middle one first.
std::vector<double> fromTheMiddle()
{
    std::vector<double> parts;
    for (int i = 1; i <= PointsPerSide; ++i)
        parts.push_back(static_cast<double>(i) / (PointsPerSide + 1));
    std::stable_sort(parts.begin(), parts.end(), [](double a, double b) { return qAbs(a - 0.5) < qAbs(b - 0.5); });
    return parts;
}

} // namespace

SiteCursor::SiteCursor(ZelGraphicsView* view, ZelGraphicsScene* scene, Host host)
    : QObject(view)
    , m_view(view)
    , m_scene(scene)
    , m_host(std::move(host))
    , m_frame(new SiteFrame(view->viewport()))
{
    connect(m_frame, &SiteFrame::pressed, this, &SiteCursor::open);
    m_view->installEventFilter(this);
    m_view->viewport()->installEventFilter(this);
}

SiteCursor::SiteCursor(ZelGraphicsView* view, ZelGraphicsScene* scene, zelchipengine& engine)
    : SiteCursor(view, scene,
        Host{[&engine] { return idsOf(planEngineOf(engine).sites()); },
            [&engine](int id) { return describeSite(planEngineOf(engine), id); }})
{ }

bool SiteCursor::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        return watched == m_view && handleKey(static_cast<QKeyEvent&>(*event));
    case QEvent::FocusIn:
        if (watched == m_view && isByTab(static_cast<QFocusEvent*>(event)->reason()))
            begin();
        break;
    case QEvent::FocusOut:
        if (watched == m_view && !isForAWhile(static_cast<QFocusEvent*>(event)->reason()))
            hide();
        break;
    case QEvent::MouseButtonPress:
        if (watched == m_view->viewport())
            hide();
        break;
    case QEvent::Paint: // zooming and scrolling always end in one
        if (watched == m_view->viewport())
            placeFrame();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

bool SiteCursor::handleKey(const QKeyEvent& event)
{
    if (const std::optional<Direction> direction = directionOf(event.key())) {
        if (!isFree(event) || places().empty())
            return false;
        move(*direction);
        return true;
    }
    const bool isOpening
        = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter || event.key() == Qt::Key_Space;
    const bool isPlain = (event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier)) == Qt::NoModifier;
    if (!isOpening || !isPlain || places().empty())
        return false;
    if (site() >= 0)
        open();
    else
        begin();
    return true;
}

bool SiteCursor::isFree(const QKeyEvent& event) const
{
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeyboardModifiers(Qt::KeypadModifier);
    const bool isScrolling = hasRange(m_view->horizontalScrollBar()) || hasRange(m_view->verticalScrollBar());
    return modifiers == Qt::ControlModifier || (modifiers == Qt::NoModifier && !isScrolling);
}

void SiteCursor::move(Direction direction)
{
    if (site() < 0)
        begin();
    else if (const SitePlace* place = nextPlace(places(), m_current.area.center(), direction))
        goTo(*place);
}

void SiteCursor::begin()
{
    const auto& selected = ZELChipViewDatabase::getInstance()->selectedIds();
    const QRectF shown = m_view->mapToScene(m_view->viewport()->rect()).boundingRect();
    const bool wasHere = m_hasCurrent && shown.contains(m_current.area.center());
    const auto found = std::find_if(
        places().begin(), places().end(), [&](const SitePlace& place) { return selected.contains(place.id); });
    const SitePlace* place = found != places().end()
        ? &*found
        : nearestPlace(places(), wasHere ? m_current.area.center() : shown.center());
    if (place)
        goTo(*place);
}

void SiteCursor::goTo(int id)
{
    const auto found
        = std::find_if(places().begin(), places().end(), [id](const SitePlace& place) { return place.id == id; });
    if (found != places().end())
        goTo(*found);
    else
        hide();
}

void SiteCursor::goTo(const SitePlace& place)
{
    m_current = place;
    m_hasCurrent = true;
    m_view->ensureVisible(m_current.area, VisibleMargin, VisibleMargin);
    m_frame->surround(m_view->mapFromScene(m_current.area).boundingRect());
    const QString description = m_host.describe(m_current.id);
    m_frame->setAccessibleName(description);
    if (m_view->hasFocus())
        m_frame->announce();
    Q_EMIT moved(m_current.area.center(), description);
}

void SiteCursor::hide()
{
    m_frame->hide();
}

int SiteCursor::site() const
{
    return m_hasCurrent && !m_frame->isHidden() ? m_current.id : -1;
}

void SiteCursor::placeFrame()
{
    if (site() >= 0)
        m_frame->surround(m_view->mapFromScene(m_current.area).boundingRect());
}

const std::vector<SitePlace>& SiteCursor::places()
{
    if (m_places.empty() || m_layers != m_view->getVisibleLayers()) {
        m_layers = m_view->getVisibleLayers();
        m_places = visiblePlaces(*m_scene, m_host.sites());
    }
    return m_places;
}

void SiteCursor::open()
{
    if (site() < 0)
        return;
    const auto type = DYNAMIC_DIALOG_DCU;
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    const auto* values = database->getDynamicValueList(type, m_current.id);
    if (!values || values->isEmpty()) {
        Q_EMIT refused(tr("%1 has no settings.").arg(m_host.describe(m_current.id).section(QLatin1Char(','), 0, 0)));
        return;
    }
    database->showDynamicDlg(pointOn(m_current), type); // returns when the dialog is closed; the view may be gone then
}

// A part of the site may lie upon its middle, and a double click there would open the settings of the part.
QPoint SiteCursor::pointOn(const SitePlace& place) const
{
    static const std::vector<double> parts = fromTheMiddle();
    for (double down : parts) {
        for (double right : parts) {
            const QPointF point(
                place.area.left() + right * place.area.width(), place.area.top() + down * place.area.height());
            const QPoint position = m_view->mapFromScene(point);
            if (settingsElementAt(*m_scene, m_view->mapToScene(position)) == place.id)
                return position;
        }
    }
    return m_view->mapFromScene(place.area.center());
}

} // namespace mirn::zelchipview
