// SPDX-License-Identifier: MIT
#include "engine/sitetablereader.h"

#include "engine/input/jsonnode.h"
#include "engine/model/resourcename.h"

#include <algorithm>
#include <charconv>

namespace mirn::zelengine {

namespace {

constexpr const char* ColumnNames[] = {"id", "name", "kind", "group", "neighbours", "reaches"};
constexpr int RequiredColumns = 3;
constexpr std::size_t MostSharedTexts = 100'000; // more are not worth their memory
constexpr int MostWarnings = 20;

QString textOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

} // namespace

SiteTableReader::SiteTableReader(Device& device)
    : m_device(device)
{
    std::fill(std::begin(m_columns), std::end(m_columns), -1);
    for (std::size_t i = 0; i < device.kinds().size(); ++i)
        m_kinds.emplace(device.kinds()[i].name.toStdString(), static_cast<int>(i));
}

QString SiteTableReader::read(const QString& fileName, QStringList* warnings)
{
    TableReader reader(fileName, ',');
    m_reader = &reader;
    const QString error = reader.read([this](const TableRow& header) { return readHeader(header); },
        [this, warnings](const TableRow& row) { return readRow(row, warnings); });
    const QString result = error.isEmpty() ? checkGroups() : error;
    m_reader = nullptr;
    return result;
}

QString SiteTableReader::readHeader(const TableRow& header)
{
    QStringList names;
    for (const std::string_view field : header.fields)
        names.append(textOf(field));
    if (names.removeDuplicates() > 0)
        return m_reader->located(header.line, QStringLiteral("a column is there twice, expected each once"));
    for (int i = 0; i < ColumnCount; ++i) {
        m_columns[i] = static_cast<int>(names.indexOf(QLatin1String(ColumnNames[i])));
        if (m_columns[i] < 0 && i < RequiredColumns)
            return m_reader->located(header.line,
                QStringLiteral("there is no column \"%1\", expected \"id\", \"name\" and \"kind\"")
                    .arg(QLatin1String(ColumnNames[i])));
    }
    for (int i = 0; i < names.size(); ++i) {
        if (std::find(std::begin(m_columns), std::end(m_columns), i) == std::end(m_columns))
            m_attributes.emplace_back(i, names.at(i));
    }
    return {};
}

std::string_view SiteTableReader::value(const TableRow& row, Column column) const
{
    return m_columns[column] < 0 ? std::string_view() : row.fields[static_cast<std::size_t>(m_columns[column])];
}

QString SiteTableReader::fail(qint64 line, Column column, const QString& sentence) const
{
    return m_reader->located(line, sentence, QLatin1String(ColumnNames[column]));
}

QString SiteTableReader::readRow(const TableRow& row, QStringList* warnings)
{
    Site site;
    QString error = readId(row, site);
    if (error.isEmpty())
        error = readName(row, site);
    if (error.isEmpty())
        error = readKind(row, site);
    if (!error.isEmpty())
        return error;
    site.group = shared(value(row, Group));
    site.neighbours = sharedList(row, Neighbours);
    site.reaches = sharedList(row, Reaches);
    for (const auto& [column, name] : m_attributes) {
        const std::string_view text = row.fields[static_cast<std::size_t>(column)];
        if (!text.empty())
            site.attributes.insert(name, shared(text));
    }
    if (readsAsId(site.name) && warnings->size() < MostWarnings)
        warnings->append(fail(row.line, Name,
            QStringLiteral("commands take \"%1\" for an id, so this site can only be reached by its id")
                .arg(site.name)));
    const int id = site.id;
    if (m_device.addSite(std::move(site)))
        return {};
    const Column taken = m_device.site(id) ? Id : Name;
    return fail(row.line, taken,
        QStringLiteral("another site has this %1, expected one that differs").arg(QLatin1String(ColumnNames[taken])));
}

QString SiteTableReader::readId(const TableRow& row, Site& site) const
{
    const std::string_view text = value(row, Id);
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), site.id);
    const bool isNumber = error == std::errc() && end == text.data() + text.size() && site.id >= 0;
    return isNumber
        ? QString()
        : fail(row.line, Id,
            QStringLiteral("\"%1\" is no id, expected a whole number from 0 to 2147483647").arg(textOf(text)));
}

QString SiteTableReader::readName(const TableRow& row, Site& site) const
{
    site.name = textOf(value(row, Name));
    const QString error = site.name.isEmpty() ? QStringLiteral("the name is empty") : textError(site.name);
    return error.isEmpty() ? QString() : fail(row.line, Name, error);
}

QString SiteTableReader::readKind(const TableRow& row, Site& site) const
{
    const auto kind = m_kinds.find(std::string(value(row, Kind)));
    if (kind != m_kinds.end()) {
        site.kind = kind->second;
        return {};
    }
    QStringList known;
    for (const SiteKind& other : m_device.kinds())
        known.append(other.name);
    const QString name = textOf(value(row, Kind));
    return fail(row.line, Kind,
        known.isEmpty()
            ? QStringLiteral("unknown kind \"%1\", for the device file has no \"kinds\"").arg(name)
            : QStringLiteral("unknown kind \"%1\", expected one of %2").arg(name, quotedAlternatives(known)));
}

const QString& SiteTableReader::shared(std::string_view text)
{
    if (m_texts.size() >= MostSharedTexts)
        m_texts.clear();
    const auto [found, isNew] = m_texts.try_emplace(std::string(text));
    if (isNew)
        found->second = textOf(text);
    return found->second;
}

const QStringList& SiteTableReader::sharedList(const TableRow& row, Column column)
{
    const std::string_view text = value(row, column);
    const auto [found, isNew] = m_lists.try_emplace(std::string(text));
    if (!isNew)
        return found->second;
    const QStringList names = textOf(text).split(QLatin1Char(' '));
    for (const QString& name : names) {
        if (name.isEmpty())
            continue;
        found->second.append(name);
        if (!m_mentioned.contains(name))
            m_mentioned.insert(name, {row.line, column});
    }
    return found->second;
}

// Runs when all sites are known.
QString SiteTableReader::checkGroups() const
{
    for (auto it = m_mentioned.begin(); it != m_mentioned.end(); ++it) {
        if (!m_device.hasGroup(it.key()))
            return fail(it->first, it->second, QStringLiteral("no site belongs to a group \"%1\"").arg(it.key()));
    }
    return {};
}

} // namespace mirn::zelengine
