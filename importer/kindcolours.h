// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importedsites.h"

#include <string>
#include <vector>

namespace mirn::zelimporter {

// Quiet colours for the kinds of sites, as "#rrggbb". The kinds with the most sites come first. Twelve kinds can be
// told apart by everybody, colour-blind or not; further ones get the same colours in other shades. Kinds that hold
// others are nearly white, so that what is in them stands out.
class KindColours
{
public:
    explicit KindColours(const ImportedSites& sites);

    struct Look
    {
        std::string fill;
        std::string border;
        std::string occupiedFill;
    };

    [[nodiscard]] const Look& of(int kind) const { return m_looks[static_cast<std::size_t>(kind)]; }

private:
    std::vector<Look> m_looks; // by kind
};

} // namespace mirn::zelimporter
