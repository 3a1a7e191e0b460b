// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importeddesign.h"
#include "importer/importedsites.h"

#include <QString>

#include <unordered_map>
#include <unordered_set>

namespace mirn::zelimporter {

// Whether what is placed already keeps the rules of its connections; a design that breaks one could not be opened.
class UnitCheck
{
public:
    // Both must outlive the check.
    UnitCheck(const ImportedSites& sites, const ImportedDesign& design);

    // Returns an empty text if it keeps its rule, or if one of its ends is not placed; else one sentence.
    [[nodiscard]] QString refusalOf(const ImportedDesign::Connection& connection) const;

private:
    using Groups = std::unordered_set<int>; // numbers in the sites' groups

    [[nodiscard]] Groups groupsIn(int list) const;
    [[nodiscard]] bool areNeighbours(int group, int other) const;

    const ImportedSites& m_sites;
    const ImportedDesign& m_design;
    std::unordered_map<int, Groups> m_neighbours; // by group: those that its sites name
};

} // namespace mirn::zelimporter
