// SPDX-License-Identifier: MIT
#include "host/gestures/dragreason.h"

#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/elementprobe.h"
#include "planning/dropposition.h"

#include <QCursor>
#include <QDragMoveEvent>
#include <QTreeWidget>

#include <utility>

namespace mirn::zelchip {

DragReason::DragReason(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelengine::ReferenceEngine& engine)
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
        m_isDragging = true;
        break;
    case QEvent::DragMove: {
        m_isDragging = true;
        const QPoint position = zelchipview::dropPosition(*static_cast<QDragMoveEvent*>(event));
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

QString DragReason::reasonAt(QPoint position) const
{
    const zelchipview::ZELGraphicItemAttribute* element = elementAt(*m_view, position);
    const int resource = draggedResource();
    if (resource < 0 || !element)
        return {};
    if (!m_engine.device().site(element->itemId))
        return tr("%1 takes no resource").arg(describeElement(*element));
    return m_engine.rules().propose(resource, element->itemId).refusal.sentence();
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
    zelchipview::ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    const QString reason = m_reason;
    tell({}, m_position);
    if (isOverDrawing && !reason.isEmpty())
        Q_EMIT refused(reason, m_position);
}

} // namespace mirn::zelchip
