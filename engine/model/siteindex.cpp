// SPDX-License-Identifier: MIT
#include "engine/model/siteindex.h"

#include <QHash>

#include <utility>

namespace mirn::zelengine {

namespace {

constexpr std::size_t FewestSlots = 64;

// Spreads keys that follow each other, as ids mostly do, over the whole table.
std::size_t spread(std::uint32_t key)
{
    return static_cast<std::size_t>((key * std::uint64_t(0x9E3779B97F4A7C15)) >> 24);
}

std::uint32_t keyOf(const QString& name)
{
    return static_cast<std::uint32_t>(qHash(name));
}

} // namespace

// Returns the slot of what is wanted, or the free one where it would be.
template <typename IsWanted> std::size_t SiteIndex::slotOf(std::uint32_t key, const Slots& table, IsWanted isWanted)
{
    const std::size_t mask = table.size() - 1;
    std::size_t slot = spread(key) & mask;
    while (table[slot].place >= 0 && !(table[slot].key == key && isWanted(table[slot].place)))
        slot = (slot + 1) & mask;
    return slot;
}

void SiteIndex::grow(Slots& table)
{
    Slots larger(table.empty() ? FewestSlots : table.size() * 2);
    for (const Slot& slot : table) {
        if (slot.place >= 0)
            larger[slotOf(slot.key, larger, [](int) { return false; })] = slot;
    }
    table = std::move(larger);
}

bool SiteIndex::add(const Site& site, const std::vector<Site>& sites)
{
    if (m_count * 2 >= m_byId.size()) {
        grow(m_byId);
        grow(m_byName);
    }
    const auto id = static_cast<std::uint32_t>(site.id);
    const std::uint32_t name = keyOf(site.name);
    Slot& byId = m_byId[slotOf(id, m_byId, [](int) { return true; })];
    Slot& byName = m_byName[slotOf(
        name, m_byName, [&](int place) { return sites[static_cast<std::size_t>(place)].name == site.name; })];
    if (byId.place >= 0 || byName.place >= 0)
        return false;
    byId = {id, static_cast<std::int32_t>(m_count)};
    byName = {name, static_cast<std::int32_t>(m_count)};
    ++m_count;
    return true;
}

int SiteIndex::find(int id) const
{
    const auto key = static_cast<std::uint32_t>(id);
    return m_count == 0 ? -1 : m_byId[slotOf(key, m_byId, [](int) { return true; })].place;
}

int SiteIndex::find(const QString& name, const std::vector<Site>& sites) const
{
    if (m_count == 0)
        return -1;
    return m_byName[slotOf(keyOf(name), m_byName, [&](int place) {
        return sites[static_cast<std::size_t>(place)].name == name;
    })].place;
}

} // namespace mirn::zelengine
