// SPDX-License-Identifier: MIT
#include "planning/movegesture.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/elements/elementidset.h"
#include "graphics/zelconstants.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsview.h"
#include "planning/elementprobe.h"
#include "planning/planquery.h"

#include <QApplication>
#include <QDrag>
#include <QIcon>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include <optional>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr QSize MovedIconSize(30, 30); // as for a drag from the tree

QString resourceOfRow(const QTreeWidgetItem* row)
{
    return row ? row->data(0, RESOURCENAME).toString() : QString();
}

QTreeWidgetItem* rowNamed(QTreeWidget* tree, const QString& resource)
{
    QTreeWidgetItemIterator row(tree);
    while (*row && resourceOfRow(*row) != resource)
        ++row;
    return *row;
}

// The resource of a row and those directly below it, whose elements the view selects together.
QStringList resourcesOf(const QTreeWidgetItem& row)
{
    QStringList names{resourceOfRow(&row)};
    for (int i = 0; i < row.childCount(); ++i)
        names.append(resourceOfRow(row.child(i)));
    return names;
}

Qt::DropAction execDrag(ZelGraphicsView* view, const QIcon& icon)
{
    // The mime data stays empty: the drop side learns from the tree's selection what is dragged.
    auto* drag = new QDrag(view); // deleted by Qt after the drag
    drag->setMimeData(new QMimeData); // owned by the drag
    drag->setPixmap(icon.pixmap(MovedIconSize));
    return drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

ElementIdSet& selection()
{
    return ZELChipViewDatabase::getInstance()->selectedIds();
}

} // namespace

struct MoveGesture::Parts
{
    struct Press
    {
        QPoint position; // in the viewport
        QPoint globalPosition;
        Qt::KeyboardModifiers modifiers;
        QString resource; // on the element that was pressed
    };

    ZelGraphicsView* view;
    const QObject* viewport; // only compared: the view is half destroyed when its viewport goes
    QTreeWidget* tree;
    PlanQuery query;
    std::optional<Press> press; // that may become a drag
    bool isSpent = false; // the press became a drag or was refused; its release means nothing to the view
    bool isForwarding = false;
};

MoveGesture::MoveGesture(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine)
    : QObject(view)
    , m_parts(new Parts{view, view->viewport(), tree, PlanQuery(engine), {}})
{
    view->viewport()->installEventFilter(this);
}

MoveGesture::~MoveGesture() = default;

bool MoveGesture::eventFilter(QObject* watched, QEvent* event)
{
    if (m_parts->isForwarding || watched != m_parts->viewport)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        return press(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseMove:
        return move(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonRelease:
        return release(static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonDblClick:
        m_parts->isSpent = false;
        return false;
    case QEvent::WindowBlocked: // by a dialog: the release is not delivered
        m_parts->press.reset();
        return false;
    default:
        return false;
    }
}

bool MoveGesture::press(const QMouseEvent& event)
{
    if (m_parts->press)
        letTheViewHaveThePress(); // another button goes down
    if (event.button() != Qt::LeftButton)
        return false;
    m_parts->isSpent = false;
    if (event.buttons() != Qt::LeftButton || ZELChipViewDatabase::getInstance()->getMouseMode() != ACTION_SELECT)
        return false;
    const ZELGraphicItemAttribute* element = elementAt(*m_parts->view, event.pos());
    if (!element || !std::as_const(selection()).contains(element->itemId))
        return false;
    const QString resource = m_parts->query.occupant(element->itemId);
    if (resource.isEmpty())
        return false;
    const QPoint globalPosition = m_parts->view->viewport()->mapToGlobal(event.pos());
    m_parts->press = Parts::Press{event.pos(), globalPosition, event.modifiers(), resource};
    return true;
}

bool MoveGesture::move(const QMouseEvent& event)
{
    if (!m_parts->press)
        return false;
    if (!event.buttons().testFlag(Qt::LeftButton)) // the release went elsewhere
        m_parts->press.reset();
    else if ((event.pos() - m_parts->press->position).manhattanLength() >= QApplication::startDragDistance())
        begin(m_parts->view->viewport()->mapToGlobal(event.pos()));
    return true;
}

bool MoveGesture::release(const QMouseEvent& event)
{
    if (event.button() != Qt::LeftButton)
        return false;
    if (m_parts->press)
        letTheViewHaveThePress(); // it was a click
    return std::exchange(m_parts->isSpent, false);
}

void MoveGesture::letTheViewHaveThePress()
{
    const Parts::Press press = *std::exchange(m_parts->press, std::nullopt);
    QMouseEvent event(QEvent::MouseButtonPress, press.position, press.globalPosition, Qt::LeftButton, Qt::LeftButton,
        press.modifiers);
    m_parts->isForwarding = true;
    QCoreApplication::sendEvent(m_parts->view->viewport(), &event);
    m_parts->isForwarding = false;
}

void MoveGesture::begin(QPoint globalPosition)
{
    const QString resource = std::exchange(m_parts->press, std::nullopt)->resource;
    m_parts->isSpent = true;
    QTreeWidgetItem* row = rowFor(resource);
    const QString reason = m_parts->query.refusalToPlace(row ? resourceOfRow(row) : resource);
    if (!reason.isEmpty())
        Q_EMIT refused(reason, globalPosition);
    else if (row && row->data(0, DRAGABLE).toBool())
        drag(row);
}

// Returns the row of what moves: the selected one if the resource is part of it, else that of the resource itself.
QTreeWidgetItem* MoveGesture::rowFor(const QString& resource) const
{
    const QList<QTreeWidgetItem*> rows = m_parts->tree->selectedItems();
    QTreeWidgetItem* selected = rows.value(0);
    const bool isPart = resource.startsWith(resourceOfRow(selected) + QLatin1Char('/'));
    return selected && isPart && selected->data(0, DRAGABLE).toBool() ? selected : rowNamed(m_parts->tree, resource);
}

void MoveGesture::drag(QTreeWidgetItem* row)
{
    const QSet<int> selectedBefore = selection().ids();
    const QString rowBefore = resourceOfRow(m_parts->tree->selectedItems().value(0));
    const QStringList moved = resourcesOf(*row);
    m_parts->tree->setCurrentItem(row);
    const QPointer<MoveGesture> self(this);
    const QPointer<QTreeWidget> tree(m_parts->tree);
    const Qt::DropAction action = execDrag(m_parts->view, row->icon(0));
    if (!self || !tree) // the host has ended the view meanwhile
        return;
    if (action == Qt::IgnoreAction) {
        if (QTreeWidgetItem* before = rowNamed(tree, rowBefore))
            tree->setCurrentItem(before);
        selection().assign(selectedBefore);
        return;
    }
    QSet<int> sites;
    for (const QString& resource : moved) {
        const int site = m_parts->query.siteOf(resource);
        if (site >= 0)
            sites.insert(site);
    }
    selection().assign(sites);
}

} // namespace mirn::zelchipview
