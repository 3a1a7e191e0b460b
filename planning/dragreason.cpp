// SPDX-License-Identifier: MIT
#include "planning/dragreason.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dragwatch.h"
#include "planning/elementprobe.h"
#include "planning/planengine.h"
#include "platform/contract/zeltext.h"

#include <QMouseEvent>
#include <QTreeWidget>

#include <algorithm>

namespace mirn::zelchipview {

DragReason::DragReason(ZelGraphicsView* view, QTreeWidget* tree, const DragWatch* watch, zelchipengine& engine)
    : QObject(view)
    , m_view(view)
    , m_tree(tree)
    , m_engine(engine)
{
    connect(watch, &DragWatch::moved, this, &DragReason::follow);
    connect(watch, &DragWatch::ended, this, &DragReason::end);
    tree->viewport()->installEventFilter(this);
}

bool DragReason::eventFilter(QObject* watched, QEvent* event)
{
    watchTree(event);
    return QObject::eventFilter(watched, event);
}

void DragReason::follow(const DropPlan& plan, QPoint position)
{
    if (!m_isDragging)
        beginDrag();
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
    if (!(move->buttons() & Qt::LeftButton) || rows.isEmpty() || rows.first()->data(0, DRAGABLE).toBool())
        return;
    m_isRowChecked = true;
    const QString reason = reasonToStay();
    if (!reason.isEmpty())
        Q_EMIT refused(reason, m_tree->viewport()->mapToGlobal(move->pos()));
}

void DragReason::beginDrag()
{
    m_isDragging = true;
    m_sites.clear();
    for (const zelsite& site : planEngineOf(m_engine).sites())
        m_sites.push_back(site.id);
    std::sort(m_sites.begin(), m_sites.end());
}

bool DragReason::isSite(int id) const
{
    return m_sites.empty() || std::binary_search(m_sites.begin(), m_sites.end(), id);
}

// Empty if no row is selected.
std::string DragReason::draggedResource() const
{
    const QList<QTreeWidgetItem*> rows = m_tree->selectedItems();
    return rows.isEmpty() ? std::string() : toEngineText(rows.first()->data(0, RESOURCENAME).toString());
}

QString DragReason::reasonFor(const DropPlan& plan, QPoint position) const
{
    if (plan.kind != DropPlan::Kind::Refused)
        return {};
    const ZELGraphicItemAttribute* element = elementAt(*m_view, m_view->viewport()->mapFromGlobal(position));
    return element && !isSite(plan.site) ? tr("%1 takes no resource").arg(describeElement(*element)) : plan.refusal;
}

// Returns why the selected row cannot be dragged.
QString DragReason::reasonToStay() const
{
    const std::string resource = draggedResource();
    return resource.empty() ? QString() : fromEngineText(planEngineOf(m_engine).refusalToPlace(&resource));
}

void DragReason::tell(const QString& reason, const QString& command, QPoint position)
{
    m_position = position;
    const bool isNew = reason != m_reason;
    m_reason = reason;
    if (isNew || !reason.isEmpty())
        Q_EMIT changed(reason, position);
    if (command == m_command)
        return;
    m_command = command;
    Q_EMIT commandChanged(command);
}

void DragReason::end(bool isOverDrawing)
{
    m_isDragging = false;
    ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    const QString reason = m_reason;
    tell({}, {}, m_position);
    if (isOverDrawing && !reason.isEmpty())
        Q_EMIT refused(reason, m_position);
}

} // namespace mirn::zelchipview
