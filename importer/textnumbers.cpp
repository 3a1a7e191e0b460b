// SPDX-License-Identifier: MIT
#include "importer/textnumbers.h"

#include <functional>

namespace mirn::zelimporter {

std::string_view TextNumbers::text(int number) const
{
    const auto index = static_cast<std::size_t>(number);
    const std::size_t begin = index == 0 ? 0 : m_ends[index - 1];
    return std::string_view(m_bytes).substr(begin, m_ends[index] - begin);
}

QString TextNumbers::string(int number) const
{
    const std::string_view bytes = text(number);
    return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
}

// The slot of an equal text, or the free one where it would be. There is always a free one.
std::size_t TextNumbers::slotOf(std::string_view wanted) const
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t slot = std::hash<std::string_view>()(wanted) & mask;
    while (m_slots[slot] >= 0 && text(m_slots[slot]) != wanted)
        slot = (slot + 1) & mask;
    return slot;
}

int TextNumbers::find(std::string_view text) const
{
    return m_slots.empty() ? -1 : m_slots[slotOf(text)];
}

int TextNumbers::add(std::string_view text)
{
    if (m_ends.size() * 2 >= m_slots.size())
        grow();
    std::int32_t& slot = m_slots[slotOf(text)];
    if (slot < 0) {
        slot = size();
        m_bytes += text;
        m_ends.push_back(m_bytes.size());
    }
    return slot;
}

void TextNumbers::grow()
{
    constexpr std::size_t Fewest = 64; // slots; always a power of two
    m_slots.assign(m_slots.empty() ? Fewest : m_slots.size() * 2, -1);
    for (int number = 0; number < size(); ++number)
        m_slots[slotOf(text(number))] = number;
}

} // namespace mirn::zelimporter
