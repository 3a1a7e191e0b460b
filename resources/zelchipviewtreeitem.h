// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QTreeWidgetItem>

namespace mirn::zelchipview {

// A row of the resource tree, in the natural order of its first column whatever column is sorted. Owned by the
// controller, also while a tree shows it.
class ZELCHIPGUI_EXPORT ZELChipViewTreeItem : public QTreeWidgetItem
{
public:
    // Null: no parent yet.
    explicit ZELChipViewTreeItem(QTreeWidgetItem* parent);
    ~ZELChipViewTreeItem() override;

    // By GridItem::compareString(), letter case counting.
    bool operator<(const QTreeWidgetItem& other) const override;
};

} // namespace mirn::zelchipview
