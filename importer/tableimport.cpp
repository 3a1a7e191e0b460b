// SPDX-License-Identifier: MIT
#include "importer/tableimport.h"

#include "engine/model/resourcename.h"
#include "importer/designwriter.h"
#include "importer/drawinglayout.h"
#include "importer/drawingwriter.h"
#include "importer/kindcolours.h"
#include "importer/projectfiles.h"
#include "importer/projectfolder.h"
#include "importer/resourcereader.h"
#include "importer/sitereader.h"
#include "importer/translation.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <utility>

namespace mirn::zelimporter {

namespace {

// The fractions of the work at which its stages end.
constexpr double SitesEnd = 0.4;
constexpr double ResourcesEnd = 0.45;
constexpr double ConnectionsEnd = 0.5;
constexpr double DrawingEnd = 0.95;

// The design is named after its table, whose name may be of any kind.
QString designName(const QString& table)
{
    const QString name = QFileInfo(table).completeBaseName();
    return zelengine::resourceNameError(name).isEmpty() ? name : QStringLiteral("design");
}

QString projectName(const ImportOptions& options)
{
    const QString folder = QFileInfo(QDir::cleanPath(options.project)).fileName();
    const QString name = options.name.isEmpty() ? folder : options.name;
    return name.isEmpty() ? QStringLiteral("device") : name;
}

QString summaryOf(const ImportedSites& sites, const ImportedDesign& design, const QString& project)
{
    const QLocale locale(QLocale::English);
    return tr("%1: %2 sites of %3 kinds, %4 resources and %5 connections were imported.")
        .arg(project, locale.toString(sites.count()), locale.toString(sites.kinds.size()),
            locale.toString(static_cast<qulonglong>(design.resources.size())),
            locale.toString(static_cast<qulonglong>(design.connections.size())));
}

} // namespace

TableImport::TableImport(ImportOptions options)
    : m_options(std::move(options))
{ }

ImportProgress TableImport::stage(double from, double to)
{
    return [this, from, to](double fraction) {
        m_progress = from + (to - from) * fraction;
        return !m_isCancelled;
    };
}

TableImport::Result TableImport::run()
{
    Result result;
    const QString nameError = zelengine::textError(projectName(m_options));
    if (!nameError.isEmpty()) {
        result.error = tr("%1: %2; expected another name for the project").arg(projectName(m_options), nameError);
        return result;
    }
    ProjectFolder folder(m_options.project);
    result.error = folder.begin(m_options.replaces);
    if (result.error.isEmpty())
        result.error = importInto(folder, result);
    result.isCancelled = m_isCancelled;
    if (result.error.isEmpty() && !result.isCancelled)
        result.error = folder.finish();
    if (result.isCancelled)
        result.error.clear();
    if (!folder.former().isEmpty())
        result.warnings.append(tr("The former project is kept as %1.").arg(folder.former()));
    return result;
}

QString TableImport::importInto(ProjectFolder& folder, Result& result)
{
    ImportedSites sites;
    SiteTableWriter siteTable(folder.file(projectfiles::Sites));
    QString error = SiteReader(m_options, siteTable).read(sites, stage(0, SitesEnd));
    const QString siteError = siteTable.close();
    if (!error.isEmpty() || !siteError.isEmpty())
        return siteError.isEmpty() ? error : siteError;

    ImportedDesign design;
    ResourceReader resources(m_options, sites, design);
    error = resources.readResources(stage(SitesEnd, ResourcesEnd));
    if (error.isEmpty())
        error = resources.readConnections(stage(ResourcesEnd, ConnectionsEnd));
    if (!error.isEmpty())
        return error;

    const QString name = projectName(m_options);
    const DrawingLayout layout(sites, m_options);
    const KindColours colours(sites);
    result.warnings = sites.warnings;
    if (layout.flatSites() > 0)
        result.warnings.append(
            tr("%1 sites have no width or no height, and are drawn larger than they are.").arg(layout.flatSites()));
    error = DrawingWriter(sites, layout, colours)
                .write(folder.file(projectfiles::Drawing), name, stage(ConnectionsEnd, DrawingEnd));
    const bool hasDesign = !m_options.resources.isEmpty();
    if (error.isEmpty() && hasDesign)
        error = DesignWriter(design, sites).write(folder.file(projectfiles::Design), designName(m_options.resources));
    if (error.isEmpty())
        error = projectfiles::writeDevice(folder.file(projectfiles::Device), name, sites, design, colours);
    if (error.isEmpty())
        error = projectfiles::writeFilter(folder.file(projectfiles::Filter), sites);
    if (error.isEmpty())
        error = projectfiles::writeProject(folder.file(projectfiles::Project), name, hasDesign);
    result.summary = summaryOf(sites, design, m_options.project);
    m_progress = 1;
    return error;
}

} // namespace mirn::zelimporter
