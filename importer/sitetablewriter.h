// SPDX-License-Identifier: MIT
#pragma once

#include "importer/outputfile.h"
#include "importer/tablecolumns.h"

#include <QString>
#include <QStringList>

namespace mirn::zelimporter {

// Writes the compact table of sites that a device file names, row by row while the sites are read, so that nobody has
// to keep the attributes.
class SiteTableWriter
{
public:
    explicit SiteTableWriter(const QString& fileName);

    // Returns a sentence about each attribute that needed another name.
    [[nodiscard]] QStringList writeHeader(const TableColumns& columns);
    void write(int id, const TableColumns& columns, const zelengine::TableRow& row);

    [[nodiscard]] QString close() { return m_file.close(); }

private:
    void writeValue(std::string_view value);

    OutputFile m_file;
};

} // namespace mirn::zelimporter
