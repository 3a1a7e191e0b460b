// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

#include <functional>

class QContextMenuEvent;
class QMenu;
class QTreeWidget;
class QTreeWidgetItem;

namespace mirn::zelchip {

// The host's own context menu of the resource tree, in place of the component's: the actions that the component has for
// the row, then the host's. The component's menus stay as they are. The Menu key opens it for the current row and
// beside it; Qt's own position for that key leaves the tree's header out and is one row off. It is a child of the tree.
class RowMenu final : public QObject
{
    Q_OBJECT
public:
    // Adds the host's actions for a resource, by name, to the menu.
    using Addition = std::function<void(QMenu& menu, const QString& resource)>;

    RowMenu(QTreeWidget* tree, Addition addition);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool open(const QContextMenuEvent& event);
    [[nodiscard]] QPoint besideRow(const QTreeWidgetItem* item) const;

    QTreeWidget* const m_tree;
    const Addition m_addition;
    QMenu* const m_menu; // child of the tree
};

} // namespace mirn::zelchip
