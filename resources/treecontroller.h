// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QList>
#include <QStringList>

class QMenu;
class QTreeWidgetItem;

namespace mirn::zelchipview {

// What the resource tree and the usage table need of the controller, which implements it. ZELChipViewDatabase says what
// each operation does.
class ZELCHIPGUI_EXPORT TreeController
{
public:
    using Provider = TreeController& (*)();

    // The controller of the process, which the provider makes when it is first asked for.
    static TreeController& current();

    // To be set before the first tree or table is made. Not null.
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
