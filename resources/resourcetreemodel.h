// SPDX-License-Identifier: MIT
#pragma once

#include "resources/resourceicons.h"
#include "resources/rownames.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QTreeWidgetItem;
class zelchipengine;
struct zeltreeviewcell;

namespace mirn::zelchipview {

class ResourceRow;
class ZELChipViewTreeItem;

// Builds the rows of the resource tree from the engine's cells, and maps resource names to element ids and back. It
// owns the rows, even while a tree widget shows them. The controller owns the model.
class ResourceTreeModel final
{
public:
    ResourceTreeModel();
    ~ResourceTreeModel();
    ResourceTreeModel(const ResourceTreeModel&) = delete;
    ResourceTreeModel& operator=(const ResourceTreeModel&) = delete;

    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // Returns the column titles; asks the engine while there are none.
    [[nodiscard]] QStringList& head();

    // Deletes the rows and builds them anew. Returns the rows of every depth, children before their parents, with null
    // for a null cell.
    [[nodiscard]] QList<QTreeWidgetItem*>& rebuild();

    // Returns the row of a cell, with its descendants below it; null for a null cell. The model owns the descendants. A
    // row without a parent belongs to the caller.
    QTreeWidgetItem* parse(zeltreeviewcell* cell, QTreeWidgetItem* parent);

    // Returns the first row with this resource name, or null.
    [[nodiscard]] QTreeWidgetItem* itemNamed(const QString& resourceName) const;

    // Returns the element ids that selecting a row selects: its own, or else those of its direct children.
    [[nodiscard]] QSet<int> idsOfRow(const QTreeWidgetItem& row) const;

    [[nodiscard]] const QHash<int, QString>& namesById() const { return m_names.byId(); }
    [[nodiscard]] QIcon& icon(const std::string& type) { return m_icons.icon(type); }

    // Deletes every row, including those that a host has added below them, and forgets the names.
    void clear();

private:
    enum class Owner { Model, Caller };

    // The values that rows of one look have in common.
    struct Look
    {
        const QIcon* icon; // null if there is none
        bool isDraggable;
        bool isResettable;
        std::unique_ptr<ZELChipViewTreeItem> row;
    };

    ResourceRow* makeBranch(const zeltreeviewcell& cell, QTreeWidgetItem* parent, Owner owner);
    ResourceRow* makeRow(const zeltreeviewcell& cell, QTreeWidgetItem* parent, Owner owner);
    [[nodiscard]] const Look& lookOf(const zeltreeviewcell& cell, int headSize);
    [[nodiscard]] const QIcon* iconOf(const zeltreeviewcell& cell);
    [[nodiscard]] QString summaryOf(const QString& resourceName);
    [[nodiscard]] int columnCount();
    static void traceSizes(const zeltreeviewcell& cell, int headSize);

    zelchipengine* m_engine = nullptr;
    ResourceIcons m_icons;
    QStringList m_head;
    bool m_wereTitlesRequested = false; // the engine was asked for the titles since the last rebuild()
    QString m_rootName; // the first component of every resource name
    QList<QTreeWidgetItem*> m_items;
    std::vector<Look> m_looks; // of the rows that are being made
    RowNames m_names;
};

} // namespace mirn::zelchipview
