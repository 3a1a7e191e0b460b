// SPDX-License-Identifier: MIT
#include "host/drawing/dragreason.h"

#include "chipview/zelchipviewdatabase.h"
#include "engine/referenceengine.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "host/drawing/elementprobe.h"

#include <QDragMoveEvent>
#include <QTreeWidget>

namespace mirn::zelchip {

namespace {

QPoint positionOf(const QDropEvent& event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.position().toPoint();
#else
    return event.pos();
#endif
}

} // namespace

DragReason::DragReason(zelchipview::ZelGraphicsView* view, QTreeWidget* tree, const zelengine::ReferenceEngine& engine)
    : QObject(view)
    , m_view(view)
    , m_tree(tree)
    , m_engine(engine)
{
    view->viewport()->installEventFilter(this);
}

bool DragReason::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragMove:
        tell(reasonAt(positionOf(*static_cast<QDragMoveEvent*>(event))));
        break;
    case QEvent::DragLeave: // also sent when a drag is cancelled
    case QEvent::Drop:
        zelchipview::ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
        tell({});
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

QString DragReason::reasonAt(QPoint position) const
{
    const QList<QTreeWidgetItem*> rows = m_tree->selectedItems();
    const zelchipview::ZELGraphicItemAttribute* element = elementAt(*m_view, position);
    if (rows.isEmpty() || !element)
        return {};
    const QString resource = rows.first()->data(0, zelchipview::RESOURCENAME).toString();
    const int index = m_engine.design().find(resource);
    if (index < 0)
        return {};
    if (!m_engine.device().site(element->itemId))
        return tr("%1 takes no resource").arg(describeElement(*element));
    return m_engine.rules().propose(index, element->itemId).refusal.sentence();
}

void DragReason::tell(const QString& reason)
{
    if (reason == m_reason)
        return;
    m_reason = reason;
    Q_EMIT changed(reason);
}

} // namespace mirn::zelchip
