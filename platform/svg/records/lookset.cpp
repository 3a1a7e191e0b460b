// SPDX-License-Identifier: MIT
#include "platform/svg/records/lookset.h"

#include "platform/svg/base/contenthash.h"

#include <cstring>
#include <string_view>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t FewestSlots = 64; // a power of two

// Looks can be compared and hashed as bytes, because they have no padding.
[[nodiscard]] std::uint64_t hashOfLook(const PackedLook& look)
{
    return hashOf(std::string_view(reinterpret_cast<const char*>(&look), sizeof look));
}

} // namespace

std::uint32_t LookSet::add(const PackedLook& look)
{
    if (2 * m_looks.size() >= m_slots.size())
        grow();
    std::size_t slot = hashOfLook(look) % m_slots.size();
    for (; m_slots[slot] != 0; slot = (slot + 1) % m_slots.size()) {
        if (std::memcmp(&m_looks[m_slots[slot] - 1], &look, sizeof look) == 0)
            return m_slots[slot] - 1;
    }
    m_looks.add(look);
    m_slots[slot] = static_cast<std::uint32_t>(m_looks.size());
    return m_slots[slot] - 1;
}

void LookSet::grow()
{
    m_slots.assign(std::max(2 * m_slots.size(), FewestSlots), 0);
    for (std::size_t i = 0; i < m_looks.size(); ++i) {
        std::size_t slot = hashOfLook(m_looks[i]) % m_slots.size();
        while (m_slots[slot] != 0)
            slot = (slot + 1) % m_slots.size();
        m_slots[slot] = static_cast<std::uint32_t>(i + 1);
    }
}

} // namespace mirn::zelsvg
