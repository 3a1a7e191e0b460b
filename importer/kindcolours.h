// SPDX-License-Identifier: MIT
#pragma once

#include "importer/importedsites.h"

#include <cstddef>
#include <string>
#include <vector>

namespace mirn::zelimporter {

// Quiet colours for the kinds of sites, as "#rrggbb". The kinds with the most sites come first. Twelve kinds can be
// told apart by everybody, colour-blind or not; further ones get the same colours in other shades. Kinds that hold
// others have the colour of what fills them most, unless another has it, and so pale that what is in them stands out.
class KindColours
{
public:
    explicit KindColours(const ImportedSites& sites);

    struct Look
    {
        std::string fill;
        std::string border;
        std::string occupiedFill;
        std::string closedFill; // while nothing is shown in it
    };

    [[nodiscard]] const Look& of(int kind) const { return m_looks[static_cast<std::size_t>(kind)]; }

private:
    using Kinds = std::vector<std::size_t>;

    [[nodiscard]] static Kinds contents(const ImportedSites& sites);
    enum class Role { Leaf, Holder, InnerHolder };
    [[nodiscard]] static Look lookOf(std::size_t colour, Role role);

    std::vector<Look> m_looks; // by kind
};

} // namespace mirn::zelimporter
