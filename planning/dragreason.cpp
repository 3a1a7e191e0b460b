// SPDX-License-Identifier: MIT
#include "planning/dragreason.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "planning/dropposition.h"
#include "planning/elementprobe.h"
#include "planning/planengine.h"
#include "platform/contract/zeltext.h"

#include <QCursor>
#include <QDragMoveEvent>
#include <QTreeWidget>

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

DragReason::DragReason(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine)
    : QObject(view)
    , m_view(view)
    , m_viewport(view->viewport())
    , m_tree(tree)
    , m_engine(engine)
{
    view->viewport()->installEventFilter(this);
    tree->viewport()->installEventFilter(this);
}

bool DragReason::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_viewport)
        watchDrawing(event);
    else
        watchTree(event);
    return QObject::eventFilter(watched, event);
}

void DragReason::watchDrawing(QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
        beginDrag();
        break;
    case QEvent::DragMove: {
        if (!m_isDragging)
            beginDrag();
        const QPoint position = dropPosition(*static_cast<QDragMoveEvent*>(event));
        tell(reasonAt(position), m_view->viewport()->mapToGlobal(position));
        break;
    }
    case QEvent::DragLeave: // also sent when a drag is cancelled, and instead of a drop that is refused
    case QEvent::WindowBlocked: // by a dialog: the end of the drag is not reported any more
        end(m_view->viewport()->rect().contains(m_view->viewport()->mapFromGlobal(QCursor::pos())));
        break;
    case QEvent::Drop:
        end(true);
        break;
    default:
        break;
    }
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

QString DragReason::reasonAt(QPoint position) const
{
    const ZELGraphicItemAttribute* element = elementAt(*m_view, position);
    const std::string resource = draggedResource();
    if (resource.empty() || !element)
        return {};
    if (!isSite(element->itemId))
        return tr("%1 takes no resource").arg(describeElement(*element));
    const std::string site = std::to_string(element->itemId);
    return fromEngineText(m_engine.refusalReason(&resource, &site));
}

// Returns why the selected row cannot be dragged.
QString DragReason::reasonToStay() const
{
    const std::string resource = draggedResource();
    return resource.empty() ? QString() : fromEngineText(planEngineOf(m_engine).refusalToPlace(&resource));
}

void DragReason::tell(const QString& reason, QPoint position)
{
    m_position = position;
    const bool isNew = reason != m_reason;
    m_reason = reason;
    if (isNew || !reason.isEmpty())
        Q_EMIT changed(reason, position);
}

void DragReason::end(bool isOverDrawing)
{
    if (!std::exchange(m_isDragging, false))
        return;
    ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    const QString reason = m_reason;
    tell({}, m_position);
    if (isOverDrawing && !reason.isEmpty())
        Q_EMIT refused(reason, m_position);
}

} // namespace mirn::zelchipview
