// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/xml/xmlhandler.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace zelsvg {

// The part of a file that is being read: what has been taken from the source and not been handled stands from
// position() to end(), with a NUL behind it, which no XML text holds. Counts the lines that it has passed.
class XmlBuffer
{
public:
    [[nodiscard]] const char* position() const { return m_position; }
    [[nodiscard]] const char* end() const { return m_end; }

    // Forwards, at most to the end.
    void moveTo(const char* position) { m_position = position; }

    // Reads on; pointers into the buffer are void afterwards. False after a read error, at the limit of `largestFile`
    // bytes and when too much is unhandled.
    [[nodiscard]] bool fill(ByteSource& source, std::uint64_t largestFile);

    // True when there is nothing more to read.
    [[nodiscard]] bool isSourceAtEnd() const { return m_isSourceAtEnd; }

    // Of the position, from 1.
    [[nodiscard]] unsigned long line() const;

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_capacity = 0;
    const char* m_position = nullptr;
    const char* m_end = nullptr;
    std::uint64_t m_size = 0; // taken from the source
    bool m_isSourceAtEnd = false;

    mutable const char* m_counted = nullptr; // up to where m_line counts
    mutable unsigned long m_line = 1;
};

} // namespace zelsvg
