// SPDX-License-Identifier: MIT
#include "host/window/rowmenu.h"

#include "chipview/zelchipviewdatabase.h"
#include "graphics/zelconstants.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QTreeWidget>

namespace mirn::zelchip {

RowMenu::RowMenu(QTreeWidget* tree)
    : QObject(tree)
    , m_tree(tree)
    , m_menu(new QMenu(tree))
{
    m_menu->setObjectName(QStringLiteral("rowMenu"));
    m_tree->installEventFilter(this); // receives the Menu key
    m_tree->viewport()->installEventFilter(this); // receives the mouse
}

bool RowMenu::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ContextMenu && open(static_cast<QContextMenuEvent&>(*event)))
        return true;
    return QObject::eventFilter(watched, event);
}

// The component's commands work on the selected row, which a right click changes before the menu opens.
bool RowMenu::open(const QContextMenuEvent& event)
{
    const bool isByKey = event.reason() == QContextMenuEvent::Keyboard;
    QTreeWidgetItem* item
        = isByKey ? m_tree->currentItem() : m_tree->itemAt(m_tree->viewport()->mapFromGlobal(event.globalPos()));
    if (!item)
        return false;
    if (isByKey && !item->isSelected())
        m_tree->setCurrentItem(item);
    m_menu->clear(); // deletes none of the component's actions
    if (QMenu* own = zelchipview::ZELChipViewDatabase::getInstance()->getTreePopupMenu(item))
        m_menu->addActions(own->actions());
    m_menu->addSeparator();
    Q_EMIT filling(m_menu, item->data(0, zelchipview::RESOURCENAME).toString());
    m_menu->popup(isByKey ? besideRow(item) : event.globalPos());
    return true;
}

QPoint RowMenu::besideRow(const QTreeWidgetItem* item) const
{
    m_tree->scrollToItem(item);
    const QRect row = m_tree->visualItemRect(item).intersected(m_tree->viewport()->rect());
    return m_tree->viewport()->mapToGlobal(QPoint(row.left() + row.width() / 4, row.bottom()));
}

} // namespace mirn::zelchip
