// SPDX-License-Identifier: MIT
#include "host/design/linereader.h"

#include "engine/input/inputfile.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace mirn::zelchip {

namespace {

constexpr std::size_t BlockSize = std::size_t(1) << 18; // bytes

} // namespace

LineReader::~LineReader()
{
    if (m_file >= 0)
        ::close(m_file);
}

bool LineReader::open(const QString& fileName, QString* error)
{
    m_file = zelengine::openInputFile(fileName, LargestJournal, error);
    m_block.resize(BlockSize);
    return m_file >= 0;
}

bool LineReader::fill()
{
    long length = -1;
    do {
        length = m_files.read(m_file, m_block.data(), m_block.size());
    } while (length < 0 && errno == EINTR);
    m_begin = m_block.data();
    m_end = m_begin + std::max(length, 0L);
    if (length < 0)
        m_error = qt_error_string(errno);
    else
        m_hash.addData(QByteArray::fromRawData(m_begin, static_cast<int>(length)));
    return length > 0;
}

void LineReader::keep(const char* begin, const char* end)
{
    const auto length = static_cast<std::size_t>(end - begin);
    const std::size_t room = LongestLine - m_kept.size();
    m_isTooLong = m_isTooLong || length > room;
    m_kept.append(begin, std::min(length, room));
    m_position += static_cast<qint64>(length);
}

bool LineReader::next(Line& line)
{
    m_kept.clear();
    m_isTooLong = false;
    const char* lineEnd = nullptr;
    bool isContinued = false;
    while (!lineEnd) {
        if (m_begin == m_end && !fill()) {
            line = {m_kept, false, m_isTooLong};
            return isContinued;
        }
        lineEnd = static_cast<const char*>(std::memchr(m_begin, '\n', static_cast<std::size_t>(m_end - m_begin)));
        if (lineEnd && !isContinued)
            break; // the whole line is in this block, which is the common case
        keep(m_begin, lineEnd ? lineEnd : m_end);
        m_begin = lineEnd ? lineEnd : m_end;
        isContinued = true;
    }
    if (isContinued) {
        line = {m_kept, true, m_isTooLong};
    } else {
        line = {{m_begin, static_cast<std::size_t>(lineEnd - m_begin)}, true, false};
        m_position += lineEnd - m_begin;
    }
    m_begin = lineEnd + 1;
    ++m_position;
    return true;
}

} // namespace mirn::zelchip
