// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/tablereader.h"
#include "engine/model/device.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace mirn::zelengine {

// Reads the sites of a device from the table that its device file names, for devices with so many sites that JSON would
// be slow. The columns are id, name and kind, then group, neighbours and reaches if there are any, whose names are
// separated by blanks; every other column is an attribute, which a site has where its value is not empty. Equal texts
// are shared.
class SiteTableReader
{
public:
    // The device knows its kinds and gets the sites.
    explicit SiteTableReader(Device& device);

    // Returns an empty text for success, else one sentence that says where the fault is and what was expected. Warnings
    // are added to *warnings, which must not be null.
    [[nodiscard]] QString read(const QString& fileName, QStringList* warnings);

private:
    enum Column { Id, Name, Kind, Group, Neighbours, Reaches, ColumnCount };

    [[nodiscard]] QString readHeader(const TableRow& header);
    [[nodiscard]] QString readRow(const TableRow& row, QStringList* warnings);
    [[nodiscard]] QString readId(const TableRow& row, Site& site) const;
    [[nodiscard]] QString readName(const TableRow& row, Site& site) const;
    [[nodiscard]] QString readKind(const TableRow& row, Site& site) const;
    [[nodiscard]] QString checkGroups() const;
    [[nodiscard]] std::string_view value(const TableRow& row, Column column) const;
    [[nodiscard]] QString fail(qint64 line, Column column, const QString& sentence) const;
    [[nodiscard]] const QString& shared(std::string_view text);
    [[nodiscard]] const QStringList& sharedList(const TableRow& row, Column column);

    Device& m_device;
    const TableReader* m_reader = nullptr; // while it reads
    int m_columns[ColumnCount]; // -1 for none
    std::vector<std::pair<int, QString>> m_attributes; // the columns of the others, with their names
    std::unordered_map<std::string, int> m_kinds;
    std::unordered_map<std::string, QString> m_texts;
    std::unordered_map<std::string, QStringList> m_lists;
    QHash<QString, std::pair<qint64, Column>> m_mentioned; // groups: where first
};

} // namespace mirn::zelengine
