// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QTreeWidget>

namespace mirn::zelchipview {

// The tree of the "Placement" dock. Shows the controller's rows without owning them, keeps what is expanded when it is
// filled again, and starts the drag of the selected resource.
class ZELCHIPGUI_EXPORT ZelTree : public QTreeWidget
{
public:
    explicit ZelTree(QWidget* parent);
    ~ZelTree() override;

    // Fills the tree from the engine. Expanded rows stay so by resource name; the selection is dropped.
    void refresh();

    // Empty for a null item.
    [[nodiscard]] QString getResourceName(QTreeWidgetItem* item) const;

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void fill();
    void takeItems();
};

} // namespace mirn::zelchipview
