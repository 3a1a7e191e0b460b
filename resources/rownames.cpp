// SPDX-License-Identifier: MIT
#include "resources/rownames.h"

namespace mirn::zelchipview {

void RowNames::clear()
{
    m_added.clear();
    m_byName.clear();
    m_byId.clear();
}

void RowNames::add(const QString& name, QTreeWidgetItem* row, std::optional<int> id)
{
    m_added.push_back({name, {row, id}});
}

QTreeWidgetItem* RowNames::row(const QString& name) const
{
    sortIn();
    return m_byName.value(name).row;
}

std::optional<int> RowNames::id(const QString& name) const
{
    sortIn();
    return m_byName.value(name).id;
}

const QHash<int, QString>& RowNames::byId() const
{
    sortIn();
    return m_byId;
}

void RowNames::sortIn() const
{
    if (m_added.empty())
        return;
    m_byName.reserve(m_byName.size() + static_cast<int>(m_added.size()));
    for (const Added& added : m_added) {
        Entry& entry = m_byName[added.name];
        if (!entry.row)
            entry.row = added.entry.row;
        if (added.entry.id) {
            entry.id = added.entry.id;
            m_byId.insert(*added.entry.id, added.name);
        }
    }
    m_added.clear();
}

} // namespace mirn::zelchipview
