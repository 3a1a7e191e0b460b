// SPDX-License-Identifier: MIT
#pragma once

#include "importer/textnumbers.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <vector>

namespace mirn::zelimporter {

// The sites of a device, as the drawing needs them. A site's number is its place in the table, from 0; its id in the
// project is one more.
struct ImportedSites
{
    static constexpr int None = -1;
    static constexpr int MostLevels = 64;

    struct Site
    {
        double x = 0; // of the corner with the smallest coordinates, in the table's coordinates
        double y = 0;
        double width = 0; // 0 or more
        double height = 0;
        std::int32_t kind = None; // number in kinds
        std::int32_t parent = None; // number of a site
        std::int32_t tooltip = None; // number in tooltips
        std::uint32_t line = 0; // of the table
        std::int32_t level = 0; // how many sites it lies in, unless the table says otherwise
    };

    struct Membership
    {
        std::int32_t group = None; // number in groups
        std::int32_t neighbours = None; // number in lists
        std::int32_t reaches = None;
    };

    // What a site has to do with groups.
    [[nodiscard]] Membership membership(int site) const
    {
        return memberships.empty() ? Membership() : memberships[static_cast<std::size_t>(site)];
    }
    [[nodiscard]] int count() const { return static_cast<int>(sites.size()); }

    std::vector<Site> sites;
    TextNumbers names; // by the number of the site
    TextNumbers kinds;
    TextNumbers tooltips;
    std::vector<Membership> memberships; // by the number of the site; empty for a table without groups
    TextNumbers groups;
    TextNumbers lists; // names of groups, separated by single blanks
    QString unit; // of the coordinates; empty if nobody said it
    int levels = 1; // one more than the highest level
    QStringList warnings; // one sentence each: what was read in another way than it was written
};

} // namespace mirn::zelimporter
