// SPDX-License-Identifier: MIT
#include "importer/sitetablewriter.h"

#include "importer/translation.h"

#include <array>

namespace mirn::zelimporter {

namespace {

struct OptionalColumn
{
    siteroles::Role role;
    std::string_view name;
};
constexpr std::array<OptionalColumn, 3> OptionalColumns{
    {{siteroles::Group, "group"}, {siteroles::Neighbours, "neighbours"}, {siteroles::Reaches, "reaches"}}};

// The names that the compact table keeps for itself, and those by which the view would change what is drawn.
const QStringList& takenNames()
{
    static const QStringList Names{QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("kind"),
        QStringLiteral("group"), QStringLiteral("neighbours"), QStringLiteral("reaches"), QStringLiteral("fill"),
        QStringLiteral("tovanel:popup")};
    return Names;
}

} // namespace

SiteTableWriter::SiteTableWriter(const QString& fileName)
    : m_file(fileName)
{ }

void SiteTableWriter::writeValue(std::string_view value)
{
    if (value.find_first_of(",\"\r\n;\t|") == std::string_view::npos) {
        m_file << value;
        return;
    }
    m_file << '"';
    for (std::size_t quote = value.find('"'); quote != std::string_view::npos; quote = value.find('"')) {
        m_file << value.substr(0, quote) << "\"\"";
        value.remove_prefix(quote + 1);
    }
    m_file << value << '"';
}

QStringList SiteTableWriter::writeHeader(const TableColumns& columns)
{
    QStringList renamed;
    m_file << "id,name,kind";
    for (const OptionalColumn& column : OptionalColumns) {
        if (columns.has(column.role))
            m_file << ',' << column.name;
    }
    for (const int column : columns.others()) {
        QString name = columns.columnName(column);
        if (takenNames().contains(name)) {
            renamed.append(tr("The column \"%1\" became the attribute \"%1_\".").arg(name));
            name += QLatin1Char('_');
        }
        m_file << ',';
        writeValue(name.toStdString());
    }
    m_file << '\n';
    return renamed;
}

void SiteTableWriter::write(int id, const TableColumns& columns, const zelengine::TableRow& row)
{
    m_file << id << ',';
    writeValue(columns.value(row, siteroles::Name));
    m_file << ',';
    writeValue(columns.value(row, siteroles::Kind));
    for (const OptionalColumn& column : OptionalColumns) {
        if (!columns.has(column.role))
            continue;
        m_file << ',';
        writeValue(columns.value(row, column.role));
    }
    for (const int column : columns.others()) {
        m_file << ',';
        writeValue(row.fields[static_cast<std::size_t>(column)]);
    }
    m_file << '\n';
}

} // namespace mirn::zelimporter
