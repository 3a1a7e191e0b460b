// SPDX-License-Identifier: MIT
#include "platform/svg/textpool.h"

#include "platform/svg/contenthash.h"

#include <algorithm>
#include <cstring>

namespace zelsvg {

namespace {

constexpr std::size_t FirstBlock = std::size_t(1) << 12;
constexpr std::size_t LargestBlock = std::size_t(1) << 22;
constexpr std::size_t RecentTexts = 1024;

} // namespace

TextPool::TextPool() = default;

char* TextPool::reserve(std::size_t size)
{
    if (m_blocks.empty() || m_blocks.back().capacity - m_blocks.back().used < size) {
        const std::size_t wanted = m_blocks.empty() ? FirstBlock : std::min(m_blocks.back().capacity * 2, LargestBlock);
        const std::size_t capacity = std::max(size, wanted);
        const std::size_t offset = m_blocks.empty() ? 1 : m_blocks.back().offset + m_blocks.back().used;
        // Not value-initialised: a block is filled before it is read.
        m_blocks.push_back({std::unique_ptr<char[]>(new char[capacity]), capacity, 0, offset});
    }
    Block& block = m_blocks.back();
    char* result = block.bytes.get() + block.used;
    block.used += size;
    return result;
}

const char* TextPool::add(std::string_view text)
{
    text = text.substr(0, text.find('\0'));
    if (text.empty())
        return emptyText();
    char* copy = reserve(text.size() + 1);
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

const char* TextPool::intern(std::string_view text)
{
    text = text.substr(0, text.find('\0'));
    if (text.empty())
        return emptyText();
    if (m_recent.empty())
        m_recent.resize(RecentTexts, {0, nullptr, 0});
    const std::uint64_t hash = hashOf(text);
    Recent& recent = m_recent[hash % RecentTexts];
    const bool isFound = recent.text && recent.hash == hash && std::string_view(recent.text, recent.length) == text;
    if (!isFound)
        recent = {hash, add(text), text.size()};
    return recent.text;
}

char* TextPool::restore(std::size_t size)
{
    m_blocks.clear();
    m_recent.clear();
    m_blocks.push_back({std::unique_ptr<char[]>(new char[size]), size, size, 0});
    return m_blocks.back().bytes.get();
}

std::size_t TextPool::offsetOf(const char* text) const
{
    if (*text == '\0')
        return 0;
    // From the end: the blocks grow, so most texts are in the last ones.
    for (auto block = m_blocks.rbegin(); block != m_blocks.rend(); ++block) {
        const auto begin = reinterpret_cast<std::uintptr_t>(block->bytes.get());
        const auto address = reinterpret_cast<std::uintptr_t>(text);
        if (address >= begin && address < begin + block->used)
            return block->offset + (address - begin);
    }
    return 0;
}

std::size_t TextPool::size() const
{
    return m_blocks.empty() ? 1 : m_blocks.back().offset + m_blocks.back().used;
}

} // namespace zelsvg
