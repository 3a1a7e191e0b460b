// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QString>
#include <QStringList>
#include <QTreeWidget>

#include <functional>
#include <memory>

namespace mirn::zelchipview {

// The tree of the "Placement" dock. It shows the controller's rows without owning them, keeps rows expanded when it is
// refilled, and starts the drag of the selected resource. The controller owns the tree.
class ZELCHIPGUI_EXPORT ZelTree : public QTreeWidget
{
public:
    // The tree is filled from the engine and not sorted.
    explicit ZelTree(QWidget* parent);
    ~ZelTree() override;

    // Refills the tree from the engine. Expanded rows stay expanded, by resource name; the selection is lost.
    void refresh();

    // Expands a row and everything below it. Emits itemExpanded() for each row that opens, parents before their
    // children.
    void expandBranch(const QTreeWidgetItem* item);

    // Takes the rows out of the tree, because their owner is about to delete them.
    void forget();

    // Returns the resource name of a row, or an empty text for null.
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
    [[nodiscard]] QStringList expandedNames() const;
    void expandNamed(const QStringList& names);
    void takeItems();

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
