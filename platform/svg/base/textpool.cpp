// SPDX-License-Identifier: MIT
#include "platform/svg/base/textpool.h"

#include "platform/svg/base/contenthash.h"

#include <limits>
#include <new>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t RecentTexts = 1024;

} // namespace

// Reserves `size` contiguous bytes. If they do not fit into the last block, the rest of that block is filled with
// zeros.
TextPool::Offset TextPool::reserve(std::size_t size)
{
    const std::size_t capacity = m_blocks.size() * BlockSize;
    const bool isFirst = m_blocks.empty();
    if (m_size + size + (isFirst ? 1 : 0) > capacity) {
        const std::size_t count = (size + (isFirst ? 1 : 0) + BlockSize - 1) / BlockSize;
        if (capacity + count * BlockSize > std::numeric_limits<Offset>::max())
            throw std::bad_alloc();
        std::unique_ptr<char[]> bytes(new char[count * BlockSize]);
        if (m_size < capacity)
            std::fill_n(writable(static_cast<Offset>(m_size)), capacity - m_size, 0);
        bytes[0] = '\0';
        m_size = capacity + (isFirst ? 1 : 0);
        for (std::size_t i = 0; i < count; ++i)
            m_blocks.push_back(bytes.get() + i * BlockSize);
        m_owned.push_back(std::move(bytes));
    }
    m_size += size;
    return static_cast<Offset>(m_size - size);
}

TextPool::Offset TextPool::add(std::string_view text)
{
    return text.empty() || text.front() == '\0' ? Empty : addDistinct(text);
}

TextPool::Offset TextPool::addDistinct(std::string_view text)
{
    text = text.substr(0, text.find('\0'));
    const Offset offset = reserve(text.size() + 1);
    char* copy = writable(offset);
    std::copy(text.begin(), text.end(), copy);
    copy[text.size()] = '\0';
    return offset;
}

TextPool::Offset TextPool::intern(std::string_view text)
{
    text = text.substr(0, text.find('\0'));
    if (text.empty())
        return Empty;
    if (m_recent.empty())
        m_recent.resize(RecentTexts, {0, Empty, 0});
    const std::uint64_t hash = hashOf(text);
    Recent& recent = m_recent[hash % RecentTexts];
    const bool isFound = recent.offset != Empty && recent.hash == hash
        && std::string_view(this->text(recent.offset), recent.length) == text;
    if (!isFound)
        recent = {hash, add(text), static_cast<std::uint32_t>(text.size())};
    return recent.offset;
}

void TextPool::setView(const char* texts, std::size_t size)
{
    *this = {};
    m_view = texts;
    m_size = size;
}

} // namespace mirn::zelsvg
