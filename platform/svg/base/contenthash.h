// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zelsvg {

// A 64-bit hash of a stream of bytes, about as fast as reading memory. It detects changes and damage; it is not
// cryptographic and gives no protection against constructed collisions.
class ContentHash
{
public:
    void add(const char* bytes, std::size_t size);

    // The hash of everything added so far; more may be added afterwards.
    [[nodiscard]] std::uint64_t value() const;

private:
    static constexpr std::size_t Lanes = 4;
    static constexpr std::size_t BlockSize = Lanes * 16;

    void addBlocks(const char* bytes, std::size_t count);

    std::uint64_t m_lanes[Lanes] = {0x243F6A8885A308D3, 0x13198A2E03707344, 0xA4093822299F31D0, 0x082EFA98EC4E6C89};
    std::uint64_t m_size = 0;
    char m_pending[BlockSize] = {};
    std::size_t m_pendingSize = 0;
};

// Returns the hash of a short text.
[[nodiscard]] std::uint64_t hashOf(std::string_view text);

} // namespace zelsvg
