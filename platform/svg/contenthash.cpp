// SPDX-License-Identifier: MIT
#include "platform/svg/contenthash.h"

#include <algorithm>
#include <cstring>

namespace zelsvg {

namespace {

__extension__ using Wide = unsigned __int128;

// Odd numbers without a pattern.
constexpr std::uint64_t Keys[] = {0x9E3779B97F4A7C15, 0xC2B2AE3D27D4EB4F, 0x165667B19E3779F9, 0xD6E8FEB86659FD93};

[[nodiscard]] std::uint64_t word(const char* bytes)
{
    std::uint64_t result;
    std::memcpy(&result, bytes, sizeof result);
    return result;
}

// The upper half of a product depends on all bits, the lower half is as it were its complement: together they mix well.
[[nodiscard]] std::uint64_t mixed(std::uint64_t a, std::uint64_t b)
{
    const Wide product = static_cast<Wide>(a) * b;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

} // namespace

// Four independent chains of multiplications, so that the processor overlaps them.
void ContentHash::addBlock(const char* bytes)
{
    for (std::size_t i = 0; i < Lanes; ++i)
        m_lanes[i] = mixed(m_lanes[i] ^ word(bytes + 16 * i), word(bytes + 16 * i + 8) ^ Keys[i]);
}

void ContentHash::add(const char* bytes, std::size_t size)
{
    m_size += size;
    if (m_pendingSize > 0) {
        const std::size_t part = std::min(size, BlockSize - m_pendingSize);
        std::memcpy(m_pending + m_pendingSize, bytes, part);
        m_pendingSize += part;
        bytes += part;
        size -= part;
        if (m_pendingSize < BlockSize)
            return;
        addBlock(m_pending);
        m_pendingSize = 0;
    }
    for (; size >= BlockSize; bytes += BlockSize, size -= BlockSize)
        addBlock(bytes);
    std::memcpy(m_pending, bytes, size);
    m_pendingSize = size;
}

std::uint64_t ContentHash::value() const
{
    ContentHash last = *this;
    std::memset(last.m_pending + last.m_pendingSize, 0, BlockSize - last.m_pendingSize);
    last.addBlock(last.m_pending);
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
