// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace zelsvg {

// Keeps NUL-terminated texts at fixed addresses, and knows them by offsets as if it were one block that begins with an
// empty text.
class TextPool
{
public:
    using Offset = std::uint32_t;
    static constexpr Offset Empty = 0;

    // A copy of `text` up to its first NUL. Throws std::bad_alloc when offsets run out.
    Offset add(std::string_view text);

    // The same, always at an offset of its own, also for an empty text.
    Offset addApart(std::string_view text);

    // Like add(), but a text that was given lately is found again instead of copied: drawings repeat tooltips and names
    // in rows. Mere luck with memory; two equal texts may well have two offsets.
    Offset intern(std::string_view text);

    [[nodiscard]] const char* text(Offset offset) const
    {
        if (m_view)
            return m_view + offset;
        return m_blocks.empty() ? "" : m_blocks[offset / BlockSize] + offset % BlockSize;
    }

    // Shows `size` bytes of texts at `texts`, which outlive this. Nothing may be added then.
    void setView(const char* texts, std::size_t size);

    // What all texts take, at least the empty one. Offsets are below.
    [[nodiscard]] std::size_t size() const { return m_size > 0 ? m_size : 1; }

    // Calls write(bytes) for all of it, piece by piece.
    template <typename Write> void forEachPiece(Write write) const
    {
        for (std::size_t begin = 0; begin < size(); begin += BlockSize)
            write(std::string_view(text(static_cast<Offset>(begin)), std::min(BlockSize, size() - begin)));
    }

private:
    static constexpr std::size_t BlockSize = std::size_t(1) << 16;

    struct Recent
    {
        std::uint64_t hash;
        Offset offset; // Empty for none
        std::uint32_t length;
    };

    Offset reserve(std::size_t size);
    [[nodiscard]] char* writable(Offset offset) { return m_blocks[offset / BlockSize] + offset % BlockSize; }

    std::vector<std::unique_ptr<char[]>> m_owned;
    std::vector<char*> m_blocks; // a longer text has several, one behind the other
    const char* m_view = nullptr;
    std::size_t m_size = 0;
    std::vector<Recent> m_recent; // by the lowest bits of the hash
};

} // namespace zelsvg
