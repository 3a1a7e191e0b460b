// SPDX-License-Identifier: MIT
#include "resources/resourcerow.h"

#include "graphics/zelconstants.h"
#include "platform/contract/griditem.h"

#include <typeinfo>
#include <utility>
#include <vector>

namespace mirn::zelchipview {

ResourceRow::ResourceRow(const ZELChipViewTreeItem& look, Record record)
    : ZELChipViewTreeItem(look)
    , m_record(std::move(record))
{ }

ResourceRow::~ResourceRow() = default;

// Sorting asks this very often, and a dynamic cast would take longer.
const ResourceRow::Record* ResourceRow::recordOf(const QTreeWidgetItem& row)
{
    if (typeid(row) != typeid(ResourceRow))
        return nullptr;
    const auto& own = static_cast<const ResourceRow&>(row);
    return own.m_hasRecord ? &own.m_record : nullptr;
}

QString ResourceRow::nameOf(const QTreeWidgetItem& row)
{
    const Record* record = recordOf(row);
    return record ? record->resourceName : row.data(0, RESOURCENAME).toString();
}

bool ResourceRow::hasUsualHeight(const QTreeWidgetItem& row)
{
    const QLatin1Char lineBreak('\n');
    if (const Record* record = recordOf(row))
        return record->hasIcon && !record->text.contains(lineBreak) && !record->otherText.contains(lineBreak);
    for (int column = 0; column < row.columnCount(); ++column) {
        if (row.text(column).contains(lineBreak))
            return false;
    }
    return row.data(0, Qt::DecorationRole).isValid();
}

bool ResourceRow::operator<(const QTreeWidgetItem& other) const
{
    const Record* right = recordOf(other);
    return m_hasRecord && right
        ? itemviewgui::GridItem::compareString(m_record.text, right->text, Qt::CaseSensitive) < 0
        : ZELChipViewTreeItem::operator<(other);
}

QVariant ResourceRow::data(int column, int role) const
{
    if (!m_hasRecord || column < 0 || column >= columnCount())
        return ZELChipViewTreeItem::data(column, role);
    if (role == Qt::DisplayRole || role == Qt::EditRole)
        return column == 0 ? m_record.text : m_record.otherText;
    if (column == 0 && role == RESOURCENAME)
        return m_record.resourceName;
    if (column == 0 && (role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole))
        return m_record.summary;
    return ZELChipViewTreeItem::data(column, role);
}

void ResourceRow::setData(int column, int role, const QVariant& value)
{
    giveUpRecord();
    ZELChipViewTreeItem::setData(column, role, value);
}

// Qt copies the values of this row and of all rows below it from its own store.
QTreeWidgetItem* ResourceRow::clone() const
{
    std::vector<const QTreeWidgetItem*> pending{this};
    while (!pending.empty()) {
        const QTreeWidgetItem* row = pending.back();
        pending.pop_back();
        if (recordOf(*row))
            const_cast<ResourceRow*>(static_cast<const ResourceRow*>(row))->giveUpRecord(); // its values stay the same
        for (int i = 0; i < row->childCount(); ++i)
            pending.push_back(row->child(i));
    }
    return ZELChipViewTreeItem::clone();
}

void ResourceRow::read(QDataStream& stream)
{
    giveUpRecord();
    ZELChipViewTreeItem::read(stream);
}

void ResourceRow::write(QDataStream& stream) const
{
    QTreeWidgetItem values(*this);
    if (m_hasRecord)
        addRecordTo(values);
    values.write(stream);
}

void ResourceRow::addRecordTo(QTreeWidgetItem& row) const
{
    for (int column = 0; column < columnCount(); ++column)
        row.setText(column, column == 0 ? m_record.text : m_record.otherText);
    row.setData(0, RESOURCENAME, m_record.resourceName);
    row.setToolTip(0, m_record.summary);
    row.setData(0, Qt::AccessibleDescriptionRole, m_record.summary);
}

// Assigning reports no change, unlike setData().
void ResourceRow::giveUpRecord()
{
    if (!std::exchange(m_hasRecord, false))
        return;
    QTreeWidgetItem values(*this);
    values.setChildIndicatorPolicy(childIndicatorPolicy());
    addRecordTo(values);
    QTreeWidgetItem::operator=(values);
    m_record = {};
}

} // namespace mirn::zelchipview
