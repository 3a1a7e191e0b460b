// SPDX-License-Identifier: MIT
#include "resources/zeltree.h"

#include "graphics/zelconstants.h"
#include "resources/resourcerow.h"
#include "resources/treecontroller.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>

#include <algorithm>
#include <vector>

namespace mirn::zelchipview {

namespace {

constexpr QSize DragIconSize(30, 30);

} // namespace

struct ZelTree::Parts
{
    bool hasHead = false; // whether the columns have titles
};

ZelTree::ZelTree(QWidget* parent)
    : QTreeWidget(parent)
    , m_parts(std::make_unique<Parts>())
{
    fill();
    setDragEnabled(true);
    setAcceptDrops(false);
    setDropIndicatorShown(true);
    header()->setSectionResizeMode(QHeaderView::Interactive);
}

ZelTree::~ZelTree()
{
    forget();
}

void ZelTree::refresh()
{
    const QStringList expanded = expandedNames();
    const int firstRow = verticalScrollBar()->value();
    {
        // Otherwise each removed row would be reported as a change of the selection.
        const QSignalBlocker silence(this);
        takeItems();
        fill();
    }
    expandNamed(expanded);
    resizeColumnToContents(0);
    // Qt reduced the scroll position while there were fewer rows.
    verticalScrollBar()->setValue(firstRow);
}

void ZelTree::expandBranch(const QTreeWidgetItem* item)
{
    // Only the rows that exist now are expanded: a host may add rows to each row that opens, which would never end.
    std::vector<QModelIndex> rows{indexFromItem(item)};
    forEachRow(rows.front(), [&rows](const QModelIndex& row) { rows.push_back(row); });
    // Otherwise Qt lays out all rows again for each row that opens.
    scheduleDelayedItemsLayout();
    for (const QModelIndex& row : rows)
        setExpanded(row, true);
    executeDelayedItemsLayout();
}

void ZelTree::forget()
{
    const QSignalBlocker silence(this);
    takeItems();
}

QString ZelTree::getResourceName(QTreeWidgetItem* item) const
{
    return item ? item->data(0, RESOURCENAME).toString() : QString();
}

void ZelTree::fill()
{
    showHead();
    QList<QTreeWidgetItem*> topLevel;
    const QList<QTreeWidgetItem*>& items = TreeController::current().getTreeItems();
    for (QTreeWidgetItem* item : items) {
        if (item && !item->parent())
            topLevel.append(item);
    }
    insertTopLevelItems(0, topLevel);
    // With different heights, Qt measures all rows above a row to find its position.
    setUniformRowHeights(std::all_of(items.cbegin(), items.cend(),
        [](const QTreeWidgetItem* item) { return !item || ResourceRow::hasUsualHeight(*item); }));
}

// The titles are set once, but an engine may have none at first.
void ZelTree::showHead()
{
    const QStringList& head = TreeController::current().getTreeHead();
    if (m_parts->hasHead || (head.isEmpty() && columnCount() == 0))
        return;
    setColumnCount(static_cast<int>(head.size()));
    setHeaderLabels(head);
    if (!head.isEmpty() && header()->sortIndicatorSection() < 0) // it was lost with the last column
        header()->setSortIndicator(0, header()->sortIndicatorOrder());
    m_parts->hasHead = !head.isEmpty();
}

void ZelTree::takeItems()
{
    // Qt searches all open branches for each row that is removed.
    collapseAll();
    for (int count = topLevelItemCount(); count > 0; --count)
        takeTopLevelItem(0);
}

// Visits all rows below `top`, each before its children. The loop goes from index to index, because Qt would have to
// search for an item among its siblings. Without columns there are rows but no indexes.
void ZelTree::forEachRow(const QModelIndex& top, const std::function<void(const QModelIndex& row)>& visit) const
{
    if (model()->columnCount() == 0)
        return;
    std::vector<QModelIndex> pending;
    const auto addChildrenOf = [&](const QModelIndex& parent) {
        for (int i = model()->rowCount(parent) - 1; i >= 0; --i)
            pending.push_back(model()->index(i, 0, parent));
    };
    addChildrenOf(top);
    while (!pending.empty()) {
        const QModelIndex row = pending.back();
        pending.pop_back();
        visit(row);
        addChildrenOf(row);
    }
}

// From top to bottom.
QStringList ZelTree::expandedNames() const
{
    QStringList names;
    forEachRow({}, [&](const QModelIndex& row) {
        if (isExpanded(row))
            names.append(ResourceRow::nameOf(*itemFromIndex(row)));
    });
    return names;
}

// As long as the rows come in the order of the names, each is compared with the next name only.
void ZelTree::expandNamed(const QStringList& names)
{
    if (names.isEmpty())
        return;
    auto next = names.cbegin();
    QSet<QString> all;
    forEachRow({}, [&](const QModelIndex& row) {
        const QString name = ResourceRow::nameOf(*itemFromIndex(row));
        const bool isNext = next != names.cend() && *next == name;
        if (isNext)
            ++next;
        else if (all.isEmpty())
            all = QSet<QString>(names.cbegin(), names.cend());
        if (isNext || all.contains(name))
            setExpanded(row, true);
    });
}

void ZelTree::mousePressEvent(QMouseEvent* event)
{
    QTreeView::mousePressEvent(event);
}

void ZelTree::mouseReleaseEvent(QMouseEvent* event)
{
    QTreeView::mouseReleaseEvent(event);
}

void ZelTree::mouseMoveEvent(QMouseEvent*)
{
    const QList<QTreeWidgetItem*> selected = selectedItems();
    if (selected.isEmpty() || !selected.first()->data(0, DRAGABLE).toBool())
        return;
    // The mime data stays empty: the drop side learns from the selection what is dragged.
    auto* drag = new QDrag(this); // deleted by Qt after the drag
    drag->setMimeData(new QMimeData); // owned by the drag
    const QIcon icon = selected.first()->data(0, Qt::DecorationRole).value<QIcon>();
    drag->setPixmap(icon.pixmap(DragIconSize, QIcon::Normal, QIcon::Off));
    // The host may refill the tree while the drag runs, so the item is not used after this.
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

void ZelTree::contextMenuEvent(QContextMenuEvent* event)
{
    QTreeWidgetItem* item = itemAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!item)
        return;
    QMenu* menu = TreeController::current().getTreePopupMenu(item);
    if (menu && !menu->isEmpty())
        menu->exec(event->globalPos());
}

} // namespace mirn::zelchipview
