// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QTreeWidgetItem>

namespace mirn::zelchipview {

// A row of the resource tree. Rows sort in the natural order of the first column, whatever column is sorted. The
// controller owns them, even while a tree shows them.
class ZELCHIPGUI_EXPORT ZELChipViewTreeItem : public QTreeWidgetItem
{
public:
    // `parent` may be null.
    explicit ZELChipViewTreeItem(QTreeWidgetItem* parent);
    ~ZELChipViewTreeItem() override;

    // Compares with GridItem::compareString(), case-sensitively.
    bool operator<(const QTreeWidgetItem& other) const override;
};

} // namespace mirn::zelchipview
