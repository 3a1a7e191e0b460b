// SPDX-License-Identifier: MIT
#include "host/gestures/dragreason.h"

#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/elementprobe.h"
#include "planning/dragwatch.h"
#include "planning/drawnelement.h"

#include <QMouseEvent>
#include <QTreeWidget>

namespace mirn::zelchip {

DragReason::DragReason(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelchipview::DragWatch* watch,
    const zelengine::ReferenceEngine& engine)
    : QObject(view)
    , m_view(view)
    , m_tree(tree)
    , m_engine(engine)
{
    connect(watch, &zelchipview::DragWatch::moved, this, &DragReason::follow);
    connect(watch, &zelchipview::DragWatch::ended, this, &DragReason::end);
    tree->viewport()->installEventFilter(this);
}

bool DragReason::eventFilter(QObject* watched, QEvent* event)
{
    watchTree(event);
    return QObject::eventFilter(watched, event);
}

void DragReason::follow(const zelchipview::DropPlan& plan, QPoint position)
{
    tell(reasonFor(plan, position), plan.command, position);
}

// The tree starts no drag from a row that cannot be dragged, so nothing else would tell the user why.
void DragReason::watchTree(QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonRelease)
        m_isRowChecked = false;
    if (event->type() != QEvent::MouseMove || m_isRowChecked)
        return;
    const auto* move = static_cast<QMouseEvent*>(event);
    const QList<QTreeWidgetItem*> rows = m_tree->selectedItems();
    if (!(move->buttons() & Qt::LeftButton) || rows.isEmpty() || rows.first()->data(0, zelchipview::DRAGABLE).toBool())
        return;
    m_isRowChecked = true;
    const QString reason = reasonToStay();
    if (!reason.isEmpty())
        Q_EMIT refused(reason, m_tree->viewport()->mapToGlobal(move->pos()));
}

int DragReason::draggedResource() const
{
    const QList<QTreeWidgetItem*> rows = m_tree->selectedItems();
    return rows.isEmpty() ? -1 : m_engine.design().find(rows.first()->data(0, zelchipview::RESOURCENAME).toString());
}

QString DragReason::reasonFor(const zelchipview::DropPlan& plan, QPoint position) const
{
    if (plan.kind != zelchipview::DropPlan::Kind::Refused || m_engine.design().find(plan.resource) < 0)
        return {};
    const QPoint inView = m_view->viewport()->mapFromGlobal(position);
    const zelchipview::ZELGraphicItemAttribute* element = zelchipview::elementUnder(*m_view, inView);
    return element && !m_engine.device().site(plan.site) ? tr("%1 takes no resource").arg(describeElement(*element))
                                                         : plan.refusal;
}

// Returns why the selected row cannot be dragged. Every site refuses such a resource for the same reason, so the first
// site is asked.
QString DragReason::reasonToStay() const
{
    const int resource = draggedResource();
    const std::vector<zelengine::Site>& sites = m_engine.device().sites();
    if (resource < 0 || sites.empty())
        return {};
    return m_engine.rules().propose(resource, sites.front().id).refusal.sentence();
}

void DragReason::tell(const QString& reason, const QString& command, QPoint position)
{
    m_position = position;
    const bool isNew = reason != m_reason || command != m_command;
    m_reason = reason;
    m_command = command;
    if (isNew || !reason.isEmpty())
        Q_EMIT changed(reason, command, position);
}

void DragReason::end(bool isOverDrawing)
{
    zelchipview::ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    const QString reason = m_reason;
    tell({}, {}, m_position);
    if (isOverDrawing && !reason.isEmpty())
        Q_EMIT refused(reason, m_position);
}

} // namespace mirn::zelchip
