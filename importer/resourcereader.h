// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/tablereader.h"
#include "importer/importeddesign.h"
#include "importer/importedsites.h"
#include "importer/importoptions.h"
#include "importer/tablecolumns.h"

#include <QHash>
#include <QStringList>

#include <memory>
#include <vector>

namespace mirn::zelimporter {

class ResourceNames;
class UnitCheck;

// Reads the tables of resources and of connections. Each may be missing.
class ResourceReader
{
public:
    // Everything must outlive the reader.
    ResourceReader(const ImportOptions& options, const ImportedSites& sites, ImportedDesign& design);
    ~ResourceReader();

    // Returns an empty text for success, else the located error. The connections come after the resources.
    [[nodiscard]] QString readResources(const ImportProgress& progress);
    [[nodiscard]] QString readConnections(const ImportProgress& progress);

private:
    using Row = zelengine::TableRow;

    [[nodiscard]] QString readResource(const Row& row);
    [[nodiscard]] QString readSite(const Row& row, ImportedDesign::Resource& resource);
    [[nodiscard]] QString check();
    [[nodiscard]] QString checkKind(const ImportedDesign::Resource& resource, int number, bool hasChildren) const;
    [[nodiscard]] QString readConnection(const Row& row);
    [[nodiscard]] int readEnd(const Row& row, int role, QString* error);
    [[nodiscard]] QString checkConnection(const Row& row, const ImportedDesign::Connection& connection) const;
    [[nodiscard]] QString fail(qint64 line, int role, const QString& sentence) const;

    const ImportOptions& m_options;
    const ImportedSites& m_sites;
    ImportedDesign& m_design;
    zelengine::TableReader m_resourceReader;
    zelengine::TableReader m_connectionReader;
    TableColumns m_columns{"resources"};
    TableColumns m_connectionColumns{"connections"};
    QStringList m_kinds; // by resource
    QStringList m_parents;
    QHash<int, std::uint32_t> m_takenSites; // the lines that take them
    std::unique_ptr<ResourceNames> m_names;
    std::unique_ptr<UnitCheck> m_check;
};

} // namespace mirn::zelimporter
