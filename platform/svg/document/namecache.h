// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/xml/xmlname.h"

#include <array>

namespace mirn::zelsvg {

// Caches the meanings of recently used names. The decoder owns one for elements and one for attributes, and clears both
// when the namespaces in scope change.
template <typename Meaning> class NameCache
{
public:
    void clear() { m_slots = {}; }

    // Returns the meaning of a name; calls `find()` if the name is not cached or too long to be cached.
    template <typename Find> Meaning meaning(const XmlName& name, Find find)
    {
        if (!name.isKey())
            return find();
        Slot& slot = m_slots[name.hash() % SlotCount];
        if (slot.size != name.text().size() || slot.first != name.first() || slot.last != name.last())
            slot = {name.first(), name.last(), name.text().size(), find()};
        return slot.meaning;
    }

private:
    static constexpr std::size_t SlotCount = 128;

    struct Slot
    {
        std::uint64_t first;
        std::uint64_t last;
        std::size_t size; // 0 if the slot is empty
        Meaning meaning;
    };

    std::array<Slot, SlotCount> m_slots{};
};

} // namespace mirn::zelsvg
