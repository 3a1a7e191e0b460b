// SPDX-License-Identifier: MIT
#include "resources/zelchipviewtreeitem.h"

#include "platform/contract/griditem.h"

namespace mirn::zelchipview {

ZELChipViewTreeItem::ZELChipViewTreeItem(QTreeWidgetItem* parent)
    : QTreeWidgetItem(parent)
{ }

ZELChipViewTreeItem::~ZELChipViewTreeItem() = default;

bool ZELChipViewTreeItem::operator<(const QTreeWidgetItem& other) const
{
    return itemviewgui::GridItem::compareString(text(0), other.text(0), Qt::CaseSensitive) < 0;
}

} // namespace mirn::zelchipview
