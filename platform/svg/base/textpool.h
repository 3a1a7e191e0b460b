// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

// Stores NUL-terminated texts at fixed addresses, as the owner or as a view. A text is identified by its offset, as if
// the pool were one block that begins with an empty text. Texts are never removed.
class TextPool
{
public:
    using Offset = std::uint32_t;
    static constexpr Offset Empty = 0;

    // Stores a copy of `text` up to its first NUL. Throws std::bad_alloc if offsets run out.
    Offset add(std::string_view text);

    // Does the same, but always at a new offset, even for an empty text.
    Offset addDistinct(std::string_view text);

    // Does the same as add(), but reuses a recently interned text instead of copying it, because drawings repeat
    // tooltips and names in sequences. It is only a cache: equal texts may have different offsets.
    Offset intern(std::string_view text);

    [[nodiscard]] const char* text(Offset offset) const
    {
        if (m_view)
            return m_view + offset;
        return m_blocks.empty() ? "" : m_blocks[offset / BlockSize] + offset % BlockSize;
    }

    // Makes this a view of `size` bytes of texts at `texts`, which must outlive it. Nothing may be added.
    void setView(const char* texts, std::size_t size);

    // The size of all texts, at least that of the empty one. All offsets are below it.
    [[nodiscard]] std::size_t size() const { return m_size > 0 ? m_size : 1; }

    // Calls write(bytes) for all bytes in order, piece by piece.
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
        Offset offset; // Empty if the slot is unused
        std::uint32_t length;
    };

    Offset reserve(std::size_t size);
    [[nodiscard]] char* writable(Offset offset) { return m_blocks[offset / BlockSize] + offset % BlockSize; }

    std::vector<std::unique_ptr<char[]>> m_owned;
    std::vector<char*> m_blocks; // in order; a long text spans several blocks
    const char* m_view = nullptr;
    std::size_t m_size = 0;
    std::vector<Recent> m_recent; // indexed by the hash
};

} // namespace mirn::zelsvg
