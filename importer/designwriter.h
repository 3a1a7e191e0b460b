// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importeddesign.h"
#include "importer/importedsites.h"
#include "importer/outputfile.h"

#include <QString>

#include <vector>

namespace mirn::zelimporter {

// Writes the design file: the tree of the resources and the connections.
class DesignWriter
{
public:
    // Both must outlive the writer.
    DesignWriter(const ImportedDesign& design, const ImportedSites& sites);

    // Returns an empty text for success, else what went wrong.
    [[nodiscard]] QString write(const QString& fileName, const QString& name);

private:
    void writeResources(OutputFile& file, const std::vector<int>& resources, int depth) const;
    void writeMembers(OutputFile& file, const ImportedDesign::Resource& resource) const;
    void writeConnections(OutputFile& file) const;

    const ImportedDesign& m_design;
    const ImportedSites& m_sites;
    std::vector<int> m_top;
    std::vector<std::vector<int>> m_children; // by resource
};

} // namespace mirn::zelimporter
