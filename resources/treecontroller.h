// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QList>
#include <QStringList>

class QMenu;
class QTreeWidgetItem;

namespace mirn::zelchipview {

// The interface that the resource tree and the usage table need of the controller, which implements it.
// ZELChipViewDatabase documents the operations.
class ZELCHIPGUI_EXPORT TreeController
{
public:
    using Provider = TreeController& (*)();

    // Returns the controller of the process. The provider creates it on first use.
    static TreeController& current();

    // Must be set before the first tree or table is created. Not null.
    static void setProvider(Provider provider);

    [[nodiscard]] virtual QStringList& getTreeHead() = 0;
    [[nodiscard]] virtual QList<QTreeWidgetItem*>& getTreeItems() = 0;
    [[nodiscard]] virtual QMenu* getTreePopupMenu(QTreeWidgetItem* item) const = 0;
    [[nodiscard]] virtual QStringList& getResTableHead() = 0;
    [[nodiscard]] virtual QList<QStringList> getResTableItems() const = 0;

protected:
    ~TreeController() = default;
};

} // namespace mirn::zelchipview
