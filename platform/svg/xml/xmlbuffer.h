// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/xml/xmlhandler.h"

#include <cstddef>
#include <cstdint>
#include <memory>

namespace mirn::zelsvg {

// The part of a file that is being read. The bytes that were read and not handled yet are between position() and end(),
// followed by a NUL, which never occurs in XML. It counts the lines it has passed.
class XmlBuffer
{
public:
    [[nodiscard]] const char* position() const { return m_position; }
    [[nodiscard]] const char* end() const { return m_end; }

    // Moves forwards, at most to the end.
    void moveTo(const char* position) { m_position = position; }

    // Reads more bytes; pointers into the buffer become invalid. Returns false after a read error, beyond `largestFile`
    // bytes, and if too many bytes are unhandled.
    [[nodiscard]] bool fill(ByteSource& source, std::uint64_t largestFile);

    // Returns true when the whole file has been read.
    [[nodiscard]] bool isSourceAtEnd() const { return m_isSourceAtEnd; }

    // The line of the position, from 1.
    [[nodiscard]] unsigned long line() const;

private:
    std::unique_ptr<char[]> m_bytes;
    std::size_t m_capacity = 0;
    const char* m_position = nullptr;
    const char* m_end = nullptr;
    std::uint64_t m_size = 0; // bytes read from the source
    bool m_isSourceAtEnd = false;

    mutable const char* m_counted = nullptr; // m_line is the line of this position
    mutable unsigned long m_line = 1;
};

} // namespace mirn::zelsvg
