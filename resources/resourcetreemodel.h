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

// The design's resources as rows: builds the tree items from the engine's cells, and knows which resource name belongs
// to which element id. Owns the items, also while a tree widget shows them.
class ResourceTreeModel final
{
public:
    ResourceTreeModel() = default;
    ~ResourceTreeModel();
    ResourceTreeModel(const ResourceTreeModel&) = delete;
    ResourceTreeModel& operator=(const ResourceTreeModel&) = delete;

    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // The column titles; the engine is asked while there are none.
    [[nodiscard]] QStringList& head();

    // Deletes the items and builds them anew. All rows at every depth, children before their parents; null for a null
    // cell.
    [[nodiscard]] QList<QTreeWidgetItem*>& rebuild();

    // The row of a cell and, below it, those of its descendants; null for a null cell. The descendants are among the
    // items, the row itself is the caller's to add.
    QTreeWidgetItem* parse(zeltreeviewcell* cell, QTreeWidgetItem* parent);

    // The first of the items with this resource name; null when there is none.
    [[nodiscard]] QTreeWidgetItem* itemNamed(const QString& resourceName) const;

    // The element ids that selecting a row selects: its own, or else those of its direct children.
    [[nodiscard]] QSet<int> idsOfRow(const QTreeWidgetItem& row) const;

    [[nodiscard]] const QMap<int, QString>& namesById() const { return m_nameById; }
    [[nodiscard]] QIcon& icon(const QString& type) { return m_icons.icon(type); }

    // Deletes every item, with what a host has hung below it, and forgets the names.
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
    bool m_isHeadAskedFor = false; // for the rows that are made next
    QString m_rootName; // the first component of every resource name
    QList<QTreeWidgetItem*> m_items;
    QHash<QString, QTreeWidgetItem*> m_itemByName;
    QMap<QString, int> m_idByName;
    QMap<int, QString> m_nameById;
};

} // namespace mirn::zelchipview
