// SPDX-License-Identifier: MIT
#include "importer/resourcereader.h"

#include "importer/namecheck.h"
#include "importer/resourcenames.h"
#include "importer/translation.h"
#include "importer/unitcheck.h"

#include <utility>

namespace mirn::zelimporter {

using zelengine::TableRow;

namespace {

constexpr int MostResources = 4'000'000;

QString stringOf(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

// Returns 1 or 0, or -1 for anything else.
int truthOf(const QString& text)
{
    static const QStringList True{
        QStringLiteral("1"), QStringLiteral("true"), QStringLiteral("yes"), QStringLiteral("x")};
    static const QStringList False{
        QString(), QStringLiteral("0"), QStringLiteral("false"), QStringLiteral("no"), QStringLiteral("-")};
    return True.contains(text.toLower()) ? 1 : False.contains(text.toLower()) ? 0 : -1;
}

} // namespace

ResourceReader::ResourceReader(const ImportOptions& options, const ImportedSites& sites, ImportedDesign& design)
    : m_options(options)
    , m_sites(sites)
    , m_design(design)
    , m_resourceReader(options.resources, options.separator)
    , m_connectionReader(options.connections, options.separator)
{ }

ResourceReader::~ResourceReader() = default;

QString ResourceReader::fail(qint64 line, int role, const QString& sentence) const
{
    return m_resourceReader.located(line, sentence, m_columns.name(role));
}

QString ResourceReader::readResources(const ImportProgress& progress)
{
    QString error;
    if (!m_options.resources.isEmpty()) {
        m_resourceReader.setProgress(progress);
        error = m_resourceReader.read(
            [this](const TableRow& header) { return m_columns.read(header, m_resourceReader, m_options); },
            [this](const TableRow& row) { return readResource(row); });
    }
    m_names = std::make_unique<ResourceNames>(m_design);
    return error.isEmpty() ? check() : error;
}

QString ResourceReader::readResource(const TableRow& row)
{
    if (m_design.resources.size() == MostResources)
        return m_resourceReader.located(
            row.line, tr("there are too many resources; expected at most %1").arg(MostResources));
    const std::string_view name = m_columns.value(row, resourceroles::Name);
    QString error = resourceNameError(name);
    if (!error.isEmpty())
        return fail(row.line, resourceroles::Name, error);
    ImportedDesign::Resource resource;
    resource.name = stringOf(name);
    resource.line = static_cast<std::uint32_t>(row.line);
    const std::string_view kind = m_columns.value(row, resourceroles::Kind);
    resource.kind = kind.empty() ? ImportedDesign::None : m_sites.kinds.find(kind);
    m_kinds.append(stringOf(kind));
    m_parents.append(stringOf(m_columns.value(row, resourceroles::Parent)));
    error = readSite(row, resource);
    if (error.isEmpty())
        m_design.resources.push_back(std::move(resource));
    return error;
}

QString ResourceReader::readSite(const TableRow& row, ImportedDesign::Resource& resource)
{
    const QString fixed = stringOf(m_columns.value(row, resourceroles::Fixed));
    const int truth = truthOf(fixed);
    if (truth < 0)
        return fail(row.line, resourceroles::Fixed, tr("\"%1\" is neither yes nor no; expected 1 or 0").arg(fixed));
    resource.isFixed = truth == 1;
    const QString name = stringOf(m_columns.value(row, resourceroles::Site));
    if (name.isEmpty())
        return resource.isFixed
            ? fail(row.line, resourceroles::Fixed, tr("what is fixed has no site; expected a site as well"))
            : QString();
    resource.site = m_sites.names.find(m_columns.value(row, resourceroles::Site));
    if (resource.site < 0)
        return fail(
            row.line, resourceroles::Site, tr("there is no site \"%1\"; expected one of the table of sites").arg(name));
    const int kind = m_sites.sites[static_cast<std::size_t>(resource.site)].kind;
    if (kind != resource.kind)
        return fail(row.line, resourceroles::Site,
            tr("the site \"%1\" is of the kind \"%2\"; expected one of the kind \"%3\"")
                .arg(name, m_sites.kinds.string(kind), stringOf(m_columns.value(row, resourceroles::Kind))));
    const auto taken = m_takenSites.constFind(resource.site);
    if (taken != m_takenSites.constEnd())
        return fail(row.line, resourceroles::Site,
            tr("the site \"%1\" is taken on line %2; expected a free one").arg(name, QString::number(*taken)));
    m_takenSites.insert(resource.site, resource.line);
    return {};
}

// Runs when all resources are known.
QString ResourceReader::check()
{
    const ResourceNames::Fault fault = m_names->resolve(m_parents);
    if (fault.resource != ImportedDesign::None)
        return fail(m_design.resources[static_cast<std::size_t>(fault.resource)].line,
            fault.isOfParent ? resourceroles::Parent : resourceroles::Name, fault.sentence);
    std::vector<bool> hasChildren(m_design.resources.size());
    for (const ImportedDesign::Resource& resource : m_design.resources) {
        if (resource.parent != ImportedDesign::None)
            hasChildren[static_cast<std::size_t>(resource.parent)] = true;
    }
    QString error;
    for (std::size_t i = 0; i < m_design.resources.size() && error.isEmpty(); ++i)
        error = checkKind(m_design.resources[i], static_cast<int>(i), hasChildren[i]);
    return error;
}

QString ResourceReader::checkKind(const ImportedDesign::Resource& resource, int number, bool hasChildren) const
{
    const QString& kind = m_kinds.at(number);
    if (resource.kind != ImportedDesign::None && hasChildren)
        return fail(resource.line, resourceroles::Kind,
            tr("\"%1\" has others below it, and sites of the kind \"%2\" take only single resources; expected another "
               "kind, or none, for a group")
                .arg(resource.name, kind));
    if (resource.kind == ImportedDesign::None && !hasChildren && !kind.isEmpty())
        return fail(resource.line, resourceroles::Kind,
            tr("no site is of the kind \"%1\", so \"%2\" could not be placed; expected the kind of a site")
                .arg(kind, resource.name));
    return {};
}

QString ResourceReader::readConnections(const ImportProgress& progress)
{
    if (m_options.connections.isEmpty())
        return {};
    m_check = std::make_unique<UnitCheck>(m_sites, m_design);
    m_connectionReader.setProgress(progress);
    return m_connectionReader.read(
        [this](const TableRow& header) { return m_connectionColumns.read(header, m_connectionReader, m_options); },
        [this](const TableRow& row) { return readConnection(row); });
}

int ResourceReader::readEnd(const TableRow& row, int role, QString* error)
{
    QString sentence;
    const int found = m_names->find(stringOf(m_connectionColumns.value(row, role)), &sentence);
    if (found != ImportedDesign::None
        && m_design.resources[static_cast<std::size_t>(found)].kind == ImportedDesign::None)
        sentence = tr("\"%1\" takes no site; expected a resource that does")
                       .arg(m_design.resources[static_cast<std::size_t>(found)].path);
    if (!sentence.isEmpty() && error->isEmpty())
        *error = m_connectionReader.located(row.line, sentence, m_connectionColumns.name(role));
    return found;
}

QString ResourceReader::readConnection(const TableRow& row)
{
    QString error;
    ImportedDesign::Connection connection;
    connection.from = readEnd(row, connectionroles::From, &error);
    connection.to = readEnd(row, connectionroles::To, &error);
    connection.rule = stringOf(m_connectionColumns.value(row, connectionroles::Rule));
    if (error.isEmpty())
        error = checkConnection(row, connection);
    if (error.isEmpty())
        m_design.connections.push_back(std::move(connection));
    return error;
}

QString ResourceReader::checkConnection(const TableRow& row, const ImportedDesign::Connection& connection) const
{
    static const QStringList Rules{
        QString(), QStringLiteral("same-unit"), QStringLiteral("reachable"), QStringLiteral("near")};
    if (connection.from == connection.to)
        return m_connectionReader.located(row.line, tr("a resource is connected with itself; expected two"),
            m_connectionColumns.name(connectionroles::To));
    const QString sentence = Rules.contains(connection.rule)
        ? m_check->refusalOf(connection)
        : tr("\"%1\" is no rule; expected \"same-unit\", \"reachable\", \"near\" or nothing").arg(connection.rule);
    return sentence.isEmpty()
        ? QString()
        : m_connectionReader.located(row.line, sentence, m_connectionColumns.name(connectionroles::Rule));
}

} // namespace mirn::zelimporter
