// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/tablereader.h"
#include "importer/importoptions.h"

#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

namespace mirn::zelimporter {

// What a column may mean.
struct ColumnRole
{
    const char* name; // also of the column, unless the options say another
    bool isRequired;
};

// The roles of the columns of each table; the enumerators are indices.
namespace siteroles {
enum Role { Name, Kind, X, Y, Width, Height, Parent, Layer, Group, Neighbours, Reaches, Tooltip };
}
namespace resourceroles {
enum Role { Name, Kind, Parent, Site, Fixed };
}
namespace connectionroles {
enum Role { From, To, Rule };
}

// Which column of a table has which role. The names of columns are compared without regard to upper and lower case, to
// blanks around them and to a unit in brackets behind them, as in "x [um]".
class TableColumns
{
public:
    // "sites", "resources" or "connections".
    explicit TableColumns(const char* table);

    // Returns an empty text for success, else the located error.
    [[nodiscard]] QString read(
        const zelengine::TableRow& header, const zelengine::TableReader& reader, const ImportOptions& options);

    // Whether one of the tables has such a role; `key` is "TABLE.ROLE".
    [[nodiscard]] static bool isRole(const QString& key);

    [[nodiscard]] bool has(int role) const { return m_columns[static_cast<std::size_t>(role)] >= 0; }
    // Returns the value without the blanks around it; empty without such a column.
    [[nodiscard]] std::string_view value(const zelengine::TableRow& row, int role) const;
    // The name as in the header, for errors; the role's without such a column.
    [[nodiscard]] QString name(int role) const;
    // What the header names behind the name of a column, in brackets; empty if nothing.
    [[nodiscard]] QString unit(int role) const;

    // The named columns without a role.
    [[nodiscard]] const std::vector<int>& others() const { return m_others; }
    [[nodiscard]] const QString& columnName(int column) const { return m_names[column]; }

private:
    [[nodiscard]] QString checkNames(const zelengine::TableRow& header, const zelengine::TableReader& reader);
    [[nodiscard]] int columnNamed(const QString& name) const;

    const QString m_table;
    const std::vector<ColumnRole>& m_roles;
    QStringList m_names; // of the columns
    std::vector<int> m_columns; // by role; -1 for none
    std::vector<int> m_others;
};

} // namespace mirn::zelimporter
