// SPDX-License-Identifier: MIT
#include "platform/svg/base/contenthash.h"

// The library's functions become part of this source; nothing is linked.
#define XXH_INLINE_ALL
#include <xxhash.h>

namespace mirn::zelsvg {

struct ContentHash::State
{
    XXH3_state_t state;
};

ContentHash::ContentHash()
    : m_state(std::make_unique<State>())
{
    reset();
}

ContentHash::~ContentHash() = default;

void ContentHash::reset()
{
    XXH3_64bits_reset(&m_state->state);
}

void ContentHash::add(const char* bytes, std::size_t size)
{
    XXH3_64bits_update(&m_state->state, bytes, size);
}

std::uint64_t ContentHash::value() const
{
    return XXH3_64bits_digest(&m_state->state);
}

std::uint64_t hashOf(std::string_view text)
{
    return XXH3_64bits(text.data(), text.size());
}

} // namespace mirn::zelsvg
