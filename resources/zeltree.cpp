// SPDX-License-Identifier: MIT
#include "resources/zeltree.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QIcon>
#include <QMenu>
#include <QMimeData>
#include <QSet>
#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

namespace mirn::zelchipview {

namespace {

constexpr QSize DragIconSize(30, 30);

} // namespace

ZelTree::ZelTree(QWidget* parent)
    : QTreeWidget(parent)
{
    const QStringList head = ZELChipViewDatabase::getInstance()->getTreeHead();
    setColumnCount(head.size());
    setHeaderLabels(head);
    fill();
    setDragEnabled(true);
    setAcceptDrops(false);
    setDropIndicatorShown(true);
    header()->setSectionResizeMode(QHeaderView::Interactive);
}

ZelTree::~ZelTree()
{
    const QSignalBlocker silence(this);
    takeItems();
}

void ZelTree::refresh()
{
    QSet<QString> expanded;
    for (QTreeWidgetItemIterator item(this); *item; ++item) {
        if ((*item)->isExpanded())
            expanded.insert(getResourceName(*item));
    }
    {
        // The rows that go would otherwise be reported as changes of the selection, one by one.
        const QSignalBlocker silence(this);
        takeItems();
        fill();
    }
    for (QTreeWidgetItemIterator item(this); *item; ++item) {
        if (expanded.contains(getResourceName(*item)))
            (*item)->setExpanded(true);
    }
    resizeColumnToContents(0);
}

QString ZelTree::getResourceName(QTreeWidgetItem* item) const
{
    return item ? item->data(0, RESOURCENAME).toString() : QString();
}

void ZelTree::fill()
{
    QList<QTreeWidgetItem*> topLevel;
    const QList<QTreeWidgetItem*>& items = ZELChipViewDatabase::getInstance()->getTreeItems();
    for (QTreeWidgetItem* item : items) {
        if (item && !item->parent())
            topLevel.append(item);
    }
    insertTopLevelItems(0, topLevel);
}

void ZelTree::takeItems()
{
    for (int count = topLevelItemCount(); count > 0; --count)
        takeTopLevelItem(0);
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
    // What is dragged the drop side learns from the selection; the mime data stays empty.
    auto* drag = new QDrag(this); // deleted by Qt after the drag
    drag->setMimeData(new QMimeData); // the drag's
    const QIcon icon = selected.first()->data(0, Qt::DecorationRole).value<QIcon>();
    drag->setPixmap(icon.pixmap(DragIconSize, QIcon::Normal, QIcon::Off));
    // The host may refill the tree while the drag runs: nothing of the item is touched after this.
    drag->exec(Qt::CopyAction | Qt::MoveAction, Qt::CopyAction);
}

void ZelTree::contextMenuEvent(QContextMenuEvent* event)
{
    QTreeWidgetItem* item = itemAt(viewport()->mapFromGlobal(event->globalPos()));
    if (!item)
        return;
    QMenu* menu = ZELChipViewDatabase::getInstance()->getTreePopupMenu(item);
    if (menu && !menu->isEmpty())
        menu->exec(event->globalPos());
}

} // namespace mirn::zelchipview
