// SPDX-License-Identifier: MIT
#include "importer/tablecolumns.h"

#include "importer/translation.h"

#include <QSet>

#include <algorithm>
#include <map>

namespace mirn::zelimporter {

using zelengine::TableReader;
using zelengine::TableRow;

namespace {

const std::map<QString, std::vector<ColumnRole>>& rolesOfTables()
{
    static const std::map<QString, std::vector<ColumnRole>> Roles{
        {QStringLiteral("sites"),
            {{"name", true}, {"kind", true}, {"x", true}, {"y", true}, {"width", true}, {"height", true},
                {"parent", false}, {"layer", false}, {"group", false}, {"neighbours", false}, {"reaches", false},
                {"tooltip", false}}},
        {QStringLiteral("resources"),
            {{"name", true}, {"kind", true}, {"parent", false}, {"site", false}, {"fixed", false}}},
        {QStringLiteral("connections"), {{"from", true}, {"to", true}, {"rule", false}}},
    };
    return Roles;
}

// Where a unit in brackets begins at the end of a column's name; -1 if there is none.
int beginOfUnit(const QString& name)
{
    if (name.endsWith(QLatin1Char(']')))
        return static_cast<int>(name.lastIndexOf(QLatin1Char('[')));
    return name.endsWith(QLatin1Char(')')) ? static_cast<int>(name.lastIndexOf(QLatin1Char('('))) : -1;
}

QString withoutUnit(const QString& name)
{
    const int begin = beginOfUnit(name);
    return begin > 0 ? name.left(begin).trimmed() : name;
}

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

} // namespace

TableColumns::TableColumns(const char* table)
    : m_table(QString::fromLatin1(table))
    , m_roles(rolesOfTables().at(m_table))
    , m_columns(m_roles.size(), -1)
{ }

bool TableColumns::isRole(const QString& key)
{
    const auto table = rolesOfTables().find(key.section(QLatin1Char('.'), 0, 0));
    return table != rolesOfTables().end()
        && std::any_of(table->second.begin(), table->second.end(),
            [&key](const ColumnRole& role) { return key.section(QLatin1Char('.'), 1) == QLatin1String(role.name); });
}

QString TableColumns::checkNames(const TableRow& header, const TableReader& reader)
{
    QSet<QString> known;
    for (const std::string_view field : header.fields) {
        const QString name = QString::fromUtf8(field.data(), static_cast<int>(field.size())).trimmed();
        if (!name.isEmpty() && known.contains(name.toLower()))
            return reader.located(header.line, tr("the column is there twice; expected each column once"), name);
        known.insert(name.toLower());
        m_names.append(name);
    }
    return {};
}

int TableColumns::columnNamed(const QString& name) const
{
    const auto isNamed = [&name](const QString& candidate) {
        return candidate.compare(name, Qt::CaseInsensitive) == 0
            || withoutUnit(candidate).compare(name, Qt::CaseInsensitive) == 0;
    };
    const auto found = std::find_if(m_names.begin(), m_names.end(), isNamed);
    return found == m_names.end() ? -1 : static_cast<int>(found - m_names.begin());
}

QString TableColumns::read(const TableRow& header, const TableReader& reader, const ImportOptions& options)
{
    const QString error = checkNames(header, reader);
    if (!error.isEmpty())
        return error;
    QSet<int> taken;
    for (std::size_t i = 0; i < m_roles.size(); ++i) {
        const QString role = QString::fromLatin1(m_roles[i].name);
        const QString given = options.columns.value(m_table + QLatin1Char('.') + role);
        m_columns[i] = columnNamed(given.isEmpty() ? role : given);
        if (m_columns[i] < 0 && (m_roles[i].isRequired || !given.isEmpty()))
            return reader.located(header.line,
                tr("there is no column \"%1\"; expected one, among %2")
                    .arg(given.isEmpty() ? role : given, m_names.join(QStringLiteral(", "))));
        taken.insert(m_columns[i]);
    }
    for (int column = 0; column < m_names.size(); ++column) {
        if (!taken.contains(column) && !m_names[column].isEmpty())
            m_others.push_back(column);
    }
    return {};
}

std::string_view TableColumns::value(const TableRow& row, int role) const
{
    const int column = m_columns[static_cast<std::size_t>(role)];
    std::string_view text = column < 0 ? std::string_view() : row.fields[static_cast<std::size_t>(column)];
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

QString TableColumns::name(int role) const
{
    const int column = m_columns[static_cast<std::size_t>(role)];
    return column < 0 ? QString::fromLatin1(m_roles[static_cast<std::size_t>(role)].name) : m_names[column];
}

QString TableColumns::unit(int role) const
{
    const int column = m_columns[static_cast<std::size_t>(role)];
    const int begin = column < 0 ? -1 : beginOfUnit(m_names[column]);
    return begin > 0 ? m_names[column].mid(begin + 1).chopped(1).trimmed() : QString();
}

} // namespace mirn::zelimporter
