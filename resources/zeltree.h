// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QSet>
#include <QString>
#include <QTreeWidget>

#include <functional>

namespace mirn::zelchipview {

// The tree of the "Placement" dock. Shows the controller's rows without owning them, keeps what is expanded when it is
// filled again, and starts the drag of the selected resource.
class ZELCHIPGUI_EXPORT ZelTree : public QTreeWidget
{
public:
    // Filled from the engine, not sorted.
    explicit ZelTree(QWidget* parent);
    ~ZelTree() override;

    // Fills the tree from the engine. Expanded rows stay so by resource name; the selection is dropped.
    void refresh();

    // Opens a row with all that is below it. Reports each row that opens, parents before their children.
    void expandBranch(const QTreeWidgetItem* item);

    // Lets go of the rows, which their owner is about to delete.
    void forget();

    // Empty for a null item.
    [[nodiscard]] QString getResourceName(QTreeWidgetItem* item) const;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void fill();
    void showHead();
    void forEachRow(const QModelIndex& top, const std::function<void(const QModelIndex& row)>& visit) const;
    [[nodiscard]] QSet<QString> expandedNames() const;
    void expandNamed(const QSet<QString>& names);
    void takeItems();

    bool m_hasHead = false;
};

} // namespace mirn::zelchipview
