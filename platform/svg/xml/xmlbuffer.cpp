// SPDX-License-Identifier: MIT
#include "platform/svg/xml/xmlbuffer.h"

#include "platform/svg/xml/xmlcharacters.h"

#include <algorithm>
#include <cstring>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t BlockSize = std::size_t(1) << 18;
constexpr std::size_t LargestRest = std::size_t(1) << 24;

} // namespace

// Moves the unhandled bytes to the front and appends new ones.
bool XmlBuffer::fill(ByteSource& source, std::uint64_t largestFile)
{
    m_line = line();
    const auto rest = static_cast<std::size_t>(m_end - m_position);
    const bool isBehindReturn = rest == 0 && m_capacity > 0 && m_position != m_bytes.get() && m_position[-1] == '\r';
    if (rest > LargestRest)
        return false;
    // At least half of the buffer is free for new bytes, so that a long tag is not rescanned too often from its
    // beginning.
    if (rest > m_capacity / 2 || m_capacity == 0) {
        m_capacity = std::max(2 * m_capacity, BlockSize);
        std::unique_ptr<char[]> bytes(new char[m_capacity + 1]);
        std::copy(m_position, m_end, bytes.get());
        m_bytes = std::move(bytes);
    } else {
        std::copy(m_position, m_end, m_bytes.get());
    }
    char* end = m_bytes.get() + rest;
    const long length = source.read(end, m_capacity - rest);
    end += std::max(length, 0L);
    *end = '\0';
    m_position = m_counted = m_bytes.get();
    m_end = end;
    m_size += static_cast<std::uint64_t>(std::max(length, 0L));
    m_isSourceAtEnd = length == 0;
    if (isBehindReturn && *m_position == '\n')
        --m_line; // it completes a line end that was counted already
    return length >= 0 && m_size <= largestFile;
}

// A line ends in LF, CR or CR LF.
unsigned long XmlBuffer::line() const
{
    while (m_counted != m_position) {
        const char* lineFeed = findXmlByte(m_counted, m_position, '\n');
        const char* end = lineFeed ? lineFeed : m_position;
        for (const char* p = m_counted; (p = findXmlByte(p, end, '\r')) != nullptr; ++p)
            m_line += p + 1 != lineFeed ? 1 : 0;
        m_line += lineFeed ? 1 : 0;
        m_counted = lineFeed ? lineFeed + 1 : m_position;
    }
    return m_line;
}

} // namespace mirn::zelsvg
