// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/site.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace mirn::zelengine {

// Finds the places of sites in a list by their ids and by their names. It takes 16 to 32 bytes a site, and nothing for
// each site alone, so that millions of them are quickly added.
class SiteIndex
{
public:
    // Returns false and adds nothing if the id or the name of the site is taken. The site's place will be the end of
    // the list, which holds all that were added.
    [[nodiscard]] bool add(const Site& site, const std::vector<Site>& sites);

    // Both return -1 if there is no such site.
    [[nodiscard]] int find(int id) const;
    [[nodiscard]] int find(const QString& name, const std::vector<Site>& sites) const;

private:
    struct Slot
    {
        std::uint32_t key = 0; // the id, or a hash of the name
        std::int32_t place = -1; // -1 for a free slot
    };
    using Slots = std::vector<Slot>;

    template <typename IsWanted>
    [[nodiscard]] static std::size_t slotOf(std::uint32_t key, const Slots& table, IsWanted isWanted);
    static void grow(Slots& table);

    Slots m_byId; // both have a power of two of slots, and at least half of them are free
    Slots m_byName;
    std::size_t m_count = 0;
};

} // namespace mirn::zelengine
