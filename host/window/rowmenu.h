// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QPoint>
#include <QString>

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
    explicit RowMenu(QTreeWidget* tree);

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted before the menu opens: whoever has actions for the resource adds them. The next opening removes them.
    void filling(QMenu* menu, const QString& resource);

private:
    bool open(const QContextMenuEvent& event);
    [[nodiscard]] QPoint besideRow(const QTreeWidgetItem* item) const;

    QTreeWidget* const m_tree;
    QMenu* const m_menu; // child of the tree
};

} // namespace mirn::zelchip
