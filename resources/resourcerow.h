// SPDX-License-Identifier: MIT
#pragma once

#include "resources/zelchipviewtreeitem.h"

#include <QString>
#include <QVariant>

namespace mirn::zelchipview {

// A row that the tree model has made. It answers for its own values from a small record and shares all others with the
// rows that look like it, because a tree has many rows, and Qt's own store of values takes many allocations for each.
// A row moves its values to Qt's store when somebody sets one. Until then, whoever reads that store past the row misses
// the record: the copy constructor and the assignment of QTreeWidgetItem, and, but for the texts, the model's
// itemData().
class ResourceRow final : public ZELChipViewTreeItem
{
public:
    struct Record
    {
        QString text; // of the first column
        QString otherText; // of all other columns
        QString resourceName;
        QString summary; // tooltip and description
        bool hasIcon = false; // among the values of its look
    };

    // A row without parent and children. `look` has an empty text for each column and all values that are not in the
    // record.
    ResourceRow(const ZELChipViewTreeItem& look, Record record);
    ResourceRow(const ResourceRow&) = delete;
    ResourceRow& operator=(const ResourceRow&) = delete;
    ~ResourceRow() override;

    // Return the resource name of any row (an empty text if it has none), and whether it has an icon and texts of one
    // line only.
    [[nodiscard]] static QString nameOf(const QTreeWidgetItem& row);
    [[nodiscard]] static bool hasUsualHeight(const QTreeWidgetItem& row);

    bool operator<(const QTreeWidgetItem& other) const override;
    [[nodiscard]] QVariant data(int column, int role) const override;
    void setData(int column, int role, const QVariant& value) override;
    [[nodiscard]] QTreeWidgetItem* clone() const override;
    void read(QDataStream& stream) override;
    void write(QDataStream& stream) const override;

private:
    // Returns null for a row of another class and for one whose values are in Qt's store.
    [[nodiscard]] static const Record* recordOf(const QTreeWidgetItem& row);
    void addRecordTo(QTreeWidgetItem& row) const;
    void giveUpRecord();

    Record m_record;
    bool m_hasRecord = true;
};

} // namespace mirn::zelchipview
