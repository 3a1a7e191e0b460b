// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/tablereader.h"
#include "importer/importedsites.h"
#include "importer/importoptions.h"
#include "importer/sitetablewriter.h"
#include "importer/tablecolumns.h"

#include <array>

namespace mirn::zelimporter {

// Reads the table of sites and writes the project's compact one meanwhile.
class SiteReader
{
public:
    // The options and the writer must outlive the reader.
    SiteReader(const ImportOptions& options, SiteTableWriter& writer);

    // Returns an empty text for success, else the located error. The parents of the sites and their levels are right.
    [[nodiscard]] QString read(ImportedSites& sites, const ImportProgress& progress);
    [[nodiscard]] bool isCancelled() const { return m_reader.isCancelled(); }

private:
    using Row = zelengine::TableRow;

    [[nodiscard]] QString readHeader(const Row& header);
    [[nodiscard]] QString readUnits(const Row& header);
    [[nodiscard]] QString readRow(const Row& row);
    [[nodiscard]] QString readTexts(const Row& row, ImportedSites::Site& site);
    [[nodiscard]] QString readParent(const Row& row, ImportedSites::Site& site);
    [[nodiscard]] QString readLevel(const Row& row, ImportedSites::Site& site);
    [[nodiscard]] QString readGroups(const Row& row);
    [[nodiscard]] QString readGroupList(const Row& row, int role, std::int32_t& list);
    [[nodiscard]] QString readArea(const Row& row, ImportedSites::Site& site) const;
    [[nodiscard]] QString checkNotes(const Row& row) const;
    [[nodiscard]] QString checkGroups() const;
    [[nodiscard]] QString fail(qint64 line, int role, const QString& sentence) const;

    struct Mention // of a name that may be read later
    {
        std::uint32_t line;
        int role;
    };

    const ImportOptions& m_options;
    SiteTableWriter& m_writer;
    zelengine::TableReader m_reader;
    TableColumns m_columns{"sites"};
    ImportedSites* m_sites = nullptr;
    std::array<double, 4> m_factors{1, 1, 1, 1}; // of x, y, width and height, to the unit of x
    TextNumbers m_parents; // a site's parent is a number of these until all are read
    TextNumbers m_mentioned; // groups
    std::vector<Mention> m_mentions; // of each mentioned group, the first
};

} // namespace mirn::zelimporter
