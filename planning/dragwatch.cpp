// SPDX-License-Identifier: MIT
#include "planning/dragwatch.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/elementidset.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dropposition.h"
#include "planning/elementprobe.h"
#include "planning/planquery.h"

#include <QCoreApplication>
#include <QCursor>
#include <QDragMoveEvent>
#include <QTreeWidget>

#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int NoElement = -1;

bool isShiftDown(const QDropEvent& event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.modifiers().testFlag(Qt::ShiftModifier);
#else
    return event.keyboardModifiers().testFlag(Qt::ShiftModifier);
#endif
}

void accept(QDropEvent& event)
{
    event.setDropAction(Qt::CopyAction);
    event.accept();
}

} // namespace

struct DragWatch::Parts
{
    ZelGraphicsView* view;
    const QObject* viewport; // only compared: the view is half destroyed when its viewport goes
    QTreeWidget* tree;
    PlanQuery query;
    DropPlan plan; // for what is under the pointer
    bool isDragging = false;
    bool isForwarding = false;
};

DragWatch::DragWatch(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine)
    : QObject(view)
    , m_parts(new Parts{view, view->viewport(), tree, PlanQuery(engine), {}})
{
    view->viewport()->installEventFilter(this);
}

DragWatch::~DragWatch() = default;

bool DragWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (m_parts->isForwarding || watched != m_parts->viewport)
        return QObject::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
        return follow(static_cast<QDropEvent&>(*event));
    case QEvent::DragLeave: // also sent when a drag is cancelled, and instead of a drop that is refused
    case QEvent::WindowBlocked: { // by a dialog: the end of the drag is not reported any more
        const QWidget* viewport = m_parts->view->viewport();
        end(viewport->rect().contains(viewport->mapFromGlobal(QCursor::pos())));
        return false;
    }
    case QEvent::Drop:
        return drop(static_cast<QDropEvent&>(*event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool DragWatch::follow(QDropEvent& event)
{
    m_parts->isDragging = true;
    plan(event);
    if (event.type() == QEvent::DragMove)
        Q_EMIT moved(m_parts->plan, m_parts->view->viewport()->mapToGlobal(dropPosition(event)));
    if (m_parts->plan.kind != DropPlan::Kind::Swap && m_parts->plan.kind != DropPlan::Kind::Place)
        return false;
    // The view follows the drag first. It refuses a swap, and over a label it forgets the site below.
    forward(event);
    if (m_parts->plan.kind == DropPlan::Kind::Swap)
        accept(event);
    else if (event.type() == QEvent::DragMove)
        keepCountdown();
    return true;
}

void DragWatch::keepCountdown() const
{
    ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
    if (database->highlightedIds().isEmpty())
        database->highlightProbPlaceItems(nullptr, m_parts->plan.site);
}

bool DragWatch::drop(QDropEvent& event)
{
    plan(event);
    const DropPlan plan = m_parts->plan;
    const QPoint position = m_parts->view->viewport()->mapToGlobal(dropPosition(event));
    if (plan.kind == DropPlan::Kind::Swap) {
        QDragLeaveEvent leave; // for the view the drag ends without a drop
        forward(leave);
        accept(event);
    }
    end(true);
    if (plan.kind != DropPlan::Kind::Swap)
        return false;
    Q_EMIT swapDropped(plan, position, isShiftDown(event));
    return true;
}

void DragWatch::end(bool isOverView)
{
    m_parts->plan = {};
    if (std::exchange(m_parts->isDragging, false))
        Q_EMIT ended(isOverView);
}

// The engine is asked once for each element that the pointer comes to.
void DragWatch::plan(const QDropEvent& event)
{
    const ZELGraphicItemAttribute* element = elementAt(*m_parts->view, dropPosition(event));
    const QString resource = draggedResource();
    const int site = element ? element->itemId : NoElement;
    if (resource == m_parts->plan.resource && site == m_parts->plan.site)
        return;
    m_parts->plan = element && !resource.isEmpty() ? m_parts->query.dropOf(resource, site) : DropPlan();
    m_parts->plan.resource = resource;
    m_parts->plan.site = site;
    // A drag from the drawing begins there, which is no mistake to be told about.
    if (event.source() == m_parts->view && site != NoElement && site == m_parts->query.siteOf(resource)) {
        m_parts->plan.kind = DropPlan::Kind::Nothing;
        m_parts->plan.refusal.clear();
    }
}

void DragWatch::forward(QEvent& event)
{
    m_parts->isForwarding = true;
    QCoreApplication::sendEvent(m_parts->view->viewport(), &event);
    m_parts->isForwarding = false;
}

QString DragWatch::draggedResource() const
{
    const QList<QTreeWidgetItem*> rows = m_parts->tree->selectedItems();
    return rows.isEmpty() ? QString() : rows.first()->data(0, RESOURCENAME).toString();
}

} // namespace mirn::zelchipview
