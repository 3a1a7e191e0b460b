// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <optional>
#include <vector>

class QTreeWidgetItem;

namespace mirn::zelchipview {

// Finds rows and element ids by resource name, and names by id. It is made for being filled with many rows at once and
// then asked for few or none, as a refresh of the tree does: the first question sorts in what was added since. The tree
// model owns it; it owns no rows.
class RowNames final
{
public:
    void clear();

    // The first row with a name and the last id with it count, and the last name with an id. `row` may be null.
    void add(const QString& name, QTreeWidgetItem* row, std::optional<int> id);

    // Returns null for an unknown name.
    [[nodiscard]] QTreeWidgetItem* row(const QString& name) const;
    [[nodiscard]] std::optional<int> id(const QString& name) const;
    [[nodiscard]] const QHash<int, QString>& byId() const;

private:
    struct Entry
    {
        QTreeWidgetItem* row = nullptr;
        std::optional<int> id;
    };

    struct Added
    {
        QString name;
        Entry entry;
    };

    void sortIn() const;

    mutable std::vector<Added> m_added; // not yet sorted in
    mutable QHash<QString, Entry> m_byName;
    mutable QHash<int, QString> m_byId;
};

} // namespace mirn::zelchipview
