// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importedsites.h"

#include <QString>

#include <vector>

namespace mirn::zelimporter {

// Which site lies in which, once all were read.
class SiteTree
{
public:
    // The parent of each site is a number of `parents` until resolve() makes it that of a site.
    SiteTree(ImportedSites& sites, const TextNumbers& parents);

    // A sentence about a parent with the line where it stands; an empty one for none.
    struct Fault
    {
        std::uint32_t line = 0;
        QString sentence;
    };

    // Finds the parents and the levels, and warns about sites that reach beyond their parents.
    [[nodiscard]] Fault resolve();

private:
    [[nodiscard]] Fault findParents();
    [[nodiscard]] Fault findLevels();
    [[nodiscard]] int depthOf(int site) const;
    void warnAboutBorders();

    ImportedSites& m_sites;
    const TextNumbers& m_parents;
};

} // namespace mirn::zelimporter
