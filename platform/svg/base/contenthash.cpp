// SPDX-License-Identifier: MIT
#include "platform/svg/base/contenthash.h"

#include <algorithm>
#include <cstring>

namespace zelsvg {

namespace {

__extension__ using Wide = unsigned __int128;

// Arbitrary odd numbers without a pattern.
constexpr std::uint64_t Keys[] = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9, 0xD6E8FEB86659FD93};

[[nodiscard]] std::uint64_t word(const char* bytes)
{
    std::uint64_t result;
    std::memcpy(&result, bytes, sizeof result);
    return result;
}

// The upper half of a product depends on all bits of both factors, each bit of the lower half only on the lower ones.
// The XOR of the two mixes well.
[[nodiscard]] std::uint64_t mixed(std::uint64_t a, std::uint64_t b)
{
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

} // namespace

// Four independent chains of multiplications, which the processor overlaps. They are in local variables, so that the
// compiler keeps them in registers.
void ContentHash::addBlocks(const char* bytes, std::size_t count)
{
    std::uint64_t a = m_lanes[0];
    std::uint64_t b = m_lanes[1];
    std::uint64_t c = m_lanes[2];
    std::uint64_t d = m_lanes[3];
    for (const char* end = bytes + count * BlockSize; bytes != end; bytes += BlockSize) {
        a = mixed(a ^ word(bytes), word(bytes + 8) ^ Keys[0]);
        b = mixed(b ^ word(bytes + 16), word(bytes + 24) ^ Keys[1]);
        c = mixed(c ^ word(bytes + 32), word(bytes + 40) ^ Keys[2]);
        d = mixed(d ^ word(bytes + 48), word(bytes + 56) ^ Keys[3]);
    }
    m_lanes[0] = a;
    m_lanes[1] = b;
    m_lanes[2] = c;
    m_lanes[3] = d;
}

void ContentHash::add(const char* bytes, std::size_t size)
{
    if (size == 0)
        return;
    m_size += size;
    if (m_pendingSize > 0) {
        const std::size_t part = std::min(size, BlockSize - m_pendingSize);
        std::memcpy(m_pending + m_pendingSize, bytes, part);
        m_pendingSize += part;
        bytes += part;
        size -= part;
        if (m_pendingSize < BlockSize)
            return;
        addBlocks(m_pending, 1);
        m_pendingSize = 0;
    }
    addBlocks(bytes, size / BlockSize);
    m_pendingSize = size % BlockSize;
    std::memcpy(m_pending, bytes + size - m_pendingSize, m_pendingSize);
}

std::uint64_t ContentHash::value() const
{
    ContentHash last = *this;
    std::memset(last.m_pending + last.m_pendingSize, 0, BlockSize - last.m_pendingSize);
    last.addBlocks(last.m_pending, 1);
    std::uint64_t result = mixed(m_size ^ Keys[0], Keys[1]);
    for (std::size_t i = 0; i < Lanes; ++i)
        result = mixed(result ^ last.m_lanes[i], Keys[i] ^ (m_size << i));
    return result;
}

std::uint64_t hashOf(std::string_view text)
{
    std::uint64_t result = text.size();
    while (text.size() >= 8) {
        result = mixed(result ^ word(text.data()), Keys[0]);
        text.remove_prefix(8);
    }
    std::uint64_t rest = 0;
    if (!text.empty())
        std::memcpy(&rest, text.data(), text.size());
    return mixed(result ^ rest, Keys[1]) ^ result;
}

} // namespace zelsvg
