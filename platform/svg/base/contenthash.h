// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>

namespace mirn::zelsvg {

// The 64-bit XXH3 hash of a stream of bytes, about as fast as reading memory. It detects changes and damage; it is not
// cryptographic and gives no protection against constructed collisions.
class ContentHash
{
public:
    ContentHash();
    ~ContentHash();

    void reset();
    void add(const char* bytes, std::size_t size);

    // The hash of everything added so far; more may be added afterwards.
    [[nodiscard]] std::uint64_t value() const;

private:
    struct State;
    const std::unique_ptr<State> m_state;
};

// Returns the hash of a text.
[[nodiscard]] std::uint64_t hashOf(std::string_view text);

} // namespace mirn::zelsvg
