// SPDX-License-Identifier: MIT
#pragma once

#include "resources/resourceicons.h"

#include <QHash>
#include <QList>
#include <QMap>
#include <QSet>
#include <QString>
#include <QStringList>

class QTreeWidgetItem;
class zelchipengine;
struct zeltreeviewcell;

namespace mirn::zelchipview {

// Builds the rows of the resource tree from the engine's cells, and maps resource names to element ids and back. It
// owns the rows, even while a tree widget shows them. The controller owns the model.
class ResourceTreeModel final
{
public:
    ResourceTreeModel() = default;
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

    [[nodiscard]] const QMap<int, QString>& namesById() const { return m_nameById; }
    [[nodiscard]] QIcon& icon(const QString& type) { return m_icons.icon(type); }

    // Deletes every row, including those that a host has added below them, and forgets the names.
    void clear();

private:
    [[nodiscard]] int columnCount();
    QTreeWidgetItem* newItem(const zeltreeviewcell& cell, QTreeWidgetItem* parent);
    void append(QTreeWidgetItem* item);
    static void fillColumns(QTreeWidgetItem* item, const zeltreeviewcell& cell, int headSize);
    void setIcon(QTreeWidgetItem* item, const zeltreeviewcell& cell);
    void keepId(const QString& resourceName, const zeltreeviewcell& cell);
    static void traceSizes(const zeltreeviewcell& cell, int headSize);

    zelchipengine* m_engine = nullptr;
    ResourceIcons m_icons;
    QStringList m_head;
    bool m_wereTitlesRequested = false; // the engine was asked for the titles since the last rebuild()
    QString m_rootName; // the first component of every resource name
    QList<QTreeWidgetItem*> m_items;
    QHash<QString, QTreeWidgetItem*> m_itemByName;
    QMap<QString, int> m_idByName;
    QMap<int, QString> m_nameById;
};

} // namespace mirn::zelchipview
