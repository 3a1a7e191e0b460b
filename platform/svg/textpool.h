// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace zelsvg {

// Keeps NUL-terminated texts at fixed addresses, packed one behind the other. Every text has an offset as if the pool
// were one block that begins with an empty text.
class TextPool
{
public:
    TextPool();

    // A copy of `text` up to its first NUL.
    const char* add(std::string_view text);

    // The same, but a text that was given lately is found again instead of copied: drawings repeat tooltips and names
    // in rows. Mere luck with memory; two equal texts may well have two addresses.
    const char* intern(std::string_view text);

    // Room for `size` bytes that the caller fills with texts, as the pool's only content; offset 0 is its begin.
    char* restore(std::size_t size);

    [[nodiscard]] static const char* emptyText() { return ""; }

    // The offset of a text that this pool gave, and how many bytes all of them take.
    [[nodiscard]] std::size_t offsetOf(const char* text) const;
    [[nodiscard]] std::size_t size() const;

    // All texts in the order of their offsets, block by block.
    template <typename Write> void forEachBlock(Write write) const
    {
        for (const Block& block : m_blocks)
            write(std::string_view(block.bytes.get(), block.used));
    }

private:
    struct Block
    {
        std::unique_ptr<char[]> bytes;
        std::size_t capacity;
        std::size_t used;
        std::size_t offset; // of the block's first byte
    };

    struct Recent
    {
        std::uint64_t hash;
        const char* text; // null for none
        std::size_t length;
    };

    char* reserve(std::size_t size);

    std::vector<Block> m_blocks;
    std::vector<Recent> m_recent; // by the lowest bits of the hash
};

} // namespace zelsvg
