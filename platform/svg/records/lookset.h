// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/chunkedarray.h"
#include "platform/svg/records/packedrecord.h"

#include <cstdint>
#include <vector>

namespace mirn::zelsvg {

// The looks of a drawing's records without duplicates, numbered in order of their first use. The record store owns it;
// looks are never removed.
class LookSet
{
public:
    // Returns the number of this look.
    std::uint32_t add(const PackedLook& look);

    [[nodiscard]] const ChunkedArray<PackedLook>& looks() const { return m_looks; }
    void setView(const PackedLook* looks, std::size_t size) { m_looks.setView(looks, size); }

private:
    void grow();

    ChunkedArray<PackedLook> m_looks;
    std::vector<std::uint32_t> m_slots; // indexed by hash: a look's number plus 1, or 0
};

} // namespace mirn::zelsvg
