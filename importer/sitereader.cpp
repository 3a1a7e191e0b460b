// SPDX-License-Identifier: MIT
#include "importer/sitereader.h"

#include "importer/namecheck.h"
#include "importer/sitetree.h"
#include "importer/translation.h"

#include <QHash>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace mirn::zelimporter {

using zelengine::TableRow;

namespace {

constexpr int MostSites = 4'000'000; // as many as a drawing can have
constexpr double LargestLength = 1e15;

QString quoted(std::string_view text)
{
    return QLatin1Char('"') + QString::fromUtf8(text.data(), static_cast<int>(text.size())) + QLatin1Char('"');
}

// Metres; 0 for an unknown unit.
double lengthOfUnit(const QString& unit)
{
    static const QHash<QString, double> Lengths{{QStringLiteral("nm"), 1e-9}, {QStringLiteral("um"), 1e-6},
        {QStringLiteral("\u00b5m"), 1e-6}, {QStringLiteral("\u03bcm"), 1e-6}, {QStringLiteral("mm"), 1e-3},
        {QStringLiteral("cm"), 1e-2}, {QStringLiteral("m"), 1}, {QStringLiteral("mil"), 25.4e-6},
        {QStringLiteral("in"), 25.4e-3}};
    return Lengths.value(unit, 0.0);
}

template <typename Number> std::optional<Number> numberIn(std::string_view text)
{
    if (text.size() > 1 && text.front() == '+')
        text.remove_prefix(1);
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace

SiteReader::SiteReader(const ImportOptions& options, SiteTableWriter& writer)
    : m_options(options)
    , m_writer(writer)
    , m_reader(options.sites, options.separator)
{ }

QString SiteReader::fail(qint64 line, int role, const QString& sentence) const
{
    return m_reader.located(line, sentence, m_columns.name(role));
}

QString SiteReader::read(ImportedSites& sites, const ImportProgress& progress)
{
    m_sites = &sites;
    m_reader.setProgress(progress);
    QString error = m_reader.read([this](const TableRow& header) { return readHeader(header); },
        [this](const TableRow& row) { return readRow(row); });
    if (error.isEmpty())
        error = checkGroups();
    if (!error.isEmpty())
        return error;
    SiteTree tree(sites, m_parents);
    const SiteTree::Fault fault = tree.resolve();
    return fault.sentence.isEmpty() ? QString() : fail(fault.line, siteroles::Parent, fault.sentence);
}

QString SiteReader::readHeader(const TableRow& header)
{
    QString error = m_columns.read(header, m_reader, m_options);
    if (error.isEmpty())
        error = readUnits(header);
    for (const int role : {siteroles::Neighbours, siteroles::Reaches}) {
        if (error.isEmpty() && m_columns.has(role) && !m_columns.has(siteroles::Group))
            error = fail(header.line, role, tr("the column names groups; expected a column \"group\" as well"));
    }
    if (error.isEmpty())
        m_sites->warnings += m_writer.writeHeader(m_columns);
    return error;
}

// All four numbers count in the unit of x. A column without a unit has that of x.
QString SiteReader::readUnits(const TableRow& header)
{
    const QString unit = m_columns.unit(siteroles::X);
    m_sites->unit = unit.isEmpty() ? m_options.unit : unit;
    for (int i = 0; i < 4; ++i) {
        const int role = siteroles::X + i;
        const QString other = m_columns.unit(role);
        if (other.isEmpty() || other == m_sites->unit)
            continue;
        const double from = lengthOfUnit(other);
        const double to = lengthOfUnit(m_sites->unit);
        if (from == 0 || to == 0)
            return fail(header.line, role,
                tr("the unit \"%1\" does not go with \"%2\" of x; expected the same, or two of nm, um, mm, cm, m, mil "
                   "and in")
                    .arg(other, m_sites->unit));
        m_factors[static_cast<std::size_t>(i)] = from / to;
    }
    return {};
}

QString SiteReader::readRow(const TableRow& row)
{
    if (m_sites->count() == MostSites)
        return m_reader.located(row.line, tr("there are too many sites; expected at most %1").arg(MostSites));
    ImportedSites::Site site;
    site.line = static_cast<std::uint32_t>(row.line);
    QString error = readTexts(row, site);
    if (error.isEmpty())
        error = readArea(row, site);
    if (error.isEmpty())
        error = readParent(row, site);
    if (error.isEmpty())
        error = readLevel(row, site);
    if (error.isEmpty())
        error = readGroups(row);
    if (error.isEmpty())
        error = checkNotes(row);
    if (!error.isEmpty())
        return error;
    m_sites->sites.push_back(site);
    m_writer.write(m_sites->count(), m_columns, row);
    return {};
}

QString SiteReader::readTexts(const TableRow& row, ImportedSites::Site& site)
{
    const std::string_view name = m_columns.value(row, siteroles::Name);
    QString error = siteNameError(name);
    if (!error.isEmpty())
        return fail(row.line, siteroles::Name, error);
    const int number = m_sites->names.add(name);
    if (number != m_sites->count())
        return fail(row.line, siteroles::Name,
            tr("the site %1 is there twice, first on line %2; expected names that differ")
                .arg(quoted(name), QString::number(m_sites->sites[static_cast<std::size_t>(number)].line)));
    const std::string_view kind = m_columns.value(row, siteroles::Kind);
    error = kind.empty() ? tr("the value is empty; expected a kind") : wordError(kind);
    if (!error.isEmpty())
        return fail(row.line, siteroles::Kind, error);
    site.kind = m_sites->kinds.add(kind);
    const std::string_view tooltip = m_columns.value(row, siteroles::Tooltip);
    error = noteError(tooltip);
    if (!error.isEmpty())
        return fail(row.line, siteroles::Tooltip, error);
    site.tooltip = tooltip.empty() ? ImportedSites::None : m_sites->tooltips.add(tooltip);
    return {};
}

QString SiteReader::readParent(const TableRow& row, ImportedSites::Site& site)
{
    const std::string_view parent = m_columns.value(row, siteroles::Parent);
    site.parent = parent.empty() ? ImportedSites::None : m_parents.add(parent);
    return {};
}

QString SiteReader::readLevel(const TableRow& row, ImportedSites::Site& site)
{
    site.level = ImportedSites::None;
    const std::string_view text = m_columns.value(row, siteroles::Layer);
    if (text.empty())
        return {};
    const std::optional<int> level = numberIn<int>(text);
    if (!level || *level < 0 || *level >= ImportedSites::MostLevels)
        return fail(row.line, siteroles::Layer,
            tr("%1 is no level of detail; expected a whole number from 0 to %2")
                .arg(quoted(text), QString::number(ImportedSites::MostLevels - 1)));
    site.level = *level;
    return {};
}

QString SiteReader::readGroups(const TableRow& row)
{
    if (!m_columns.has(siteroles::Group))
        return {};
    ImportedSites::Membership membership;
    const std::string_view group = m_columns.value(row, siteroles::Group);
    QString error = wordError(group);
    if (!error.isEmpty())
        return fail(row.line, siteroles::Group, error);
    if (!group.empty())
        membership.group = m_sites->groups.add(group);
    error = readGroupList(row, siteroles::Neighbours, membership.neighbours);
    if (error.isEmpty())
        error = readGroupList(row, siteroles::Reaches, membership.reaches);
    m_sites->memberships.push_back(membership);
    return error;
}

// The names are separated by blanks.
QString SiteReader::readGroupList(const TableRow& row, int role, std::int32_t& list)
{
    std::string names;
    std::string_view rest = m_columns.value(row, role);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(' '), rest.size());
        const std::string_view group = rest.substr(0, end);
        rest.remove_prefix(std::min(rest.size(), end + 1));
        if (group.empty())
            continue;
        const QString error = wordError(group);
        if (!error.isEmpty())
            return fail(row.line, role, error);
        if (m_mentioned.add(group) == static_cast<int>(m_mentions.size()))
            m_mentions.push_back({static_cast<std::uint32_t>(row.line), role});
        names.append(names.empty() ? "" : " ").append(group);
    }
    list = names.empty() ? ImportedSites::None : m_sites->lists.add(names);
    return {};
}

QString SiteReader::checkGroups() const
{
    for (int i = 0; i < m_mentioned.size(); ++i) {
        const Mention& mention = m_mentions[static_cast<std::size_t>(i)];
        if (m_sites->groups.find(m_mentioned.text(i)) < 0)
            return fail(mention.line, mention.role,
                tr("no site belongs to a group %1; expected names of groups, separated by blanks")
                    .arg(quoted(m_mentioned.text(i))));
    }
    return {};
}

QString SiteReader::readArea(const TableRow& row, ImportedSites::Site& site) const
{
    const std::array<double*, 4> values{&site.x, &site.y, &site.width, &site.height};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const int role = siteroles::X + static_cast<int>(i);
        const std::string_view text = m_columns.value(row, role);
        const std::optional<double> number = numberIn<double>(text);
        if (!number || !std::isfinite(*number))
            return fail(row.line, role, tr("%1 is no number; expected one such as 12.5 or 1e-3").arg(quoted(text)));
        *values[i] = *number * m_factors[i];
        if (std::abs(*values[i]) > LargestLength)
            return fail(row.line, role, tr("%1 is too large; expected at most 1e15").arg(quoted(text)));
        if (role >= siteroles::Width && *number < 0)
            return fail(row.line, role, tr("%1 is below 0; expected a size").arg(quoted(text)));
    }
    return {};
}

QString SiteReader::checkNotes(const TableRow& row) const
{
    for (const int column : m_columns.others()) {
        const QString error = noteError(row.fields[static_cast<std::size_t>(column)]);
        if (!error.isEmpty())
            return m_reader.located(row.line, error, m_columns.columnName(column));
    }
    return {};
}

} // namespace mirn::zelimporter
