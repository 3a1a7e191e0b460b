// SPDX-License-Identifier: MIT
#include "platform/svg/workingfile/drawingfile.h"

#include "platform/contract/zelprogress.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <memory>

namespace mirn::zelsvg {

namespace {

// bytes; small enough to stay in the processor's cache between reading and hashing
constexpr std::size_t HashBlock = std::size_t(1) << 17;

[[nodiscard]] FileStamp stampOf(const struct stat& status)
{
    FileStamp stamp;
    stamp.size = static_cast<std::uint64_t>(status.st_size);
    stamp.modified = {status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    stamp.changed = {status.st_ctim.tv_sec, status.st_ctim.tv_nsec};
    stamp.device = status.st_dev;
    stamp.inode = status.st_ino;
    return stamp;
}

} // namespace

DrawingFile::DrawingFile(int secondsToSettle)
    : m_secondsToSettle(secondsToSettle)
{ }

DrawingFile::~DrawingFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool DrawingFile::open(const std::string& path, std::string& reason)
{
    // O_NONBLOCK, because opening a pipe would wait for a writer.
    m_descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status;
    if (m_descriptor < 0 || ::fstat(m_descriptor, &status) != 0) {
        reason = "the file cannot be opened: " + std::string(std::strerror(errno));
        return false;
    }
    if (!S_ISREG(status.st_mode)) {
        reason = S_ISDIR(status.st_mode) ? "found a folder, expected an SVG file"
                                         : "found something else than a file, expected an SVG file";
        return false;
    }
    m_key = {};
    m_key.stamp = stampOf(status);
    m_key.isSettled = std::time(nullptr) >= m_key.stamp.changed.seconds + m_secondsToSettle ? 1 : 0;
    return true;
}

long DrawingFile::read(char* buffer, std::size_t size)
{
    ssize_t length = -1;
    const std::uint64_t whole = std::max<std::uint64_t>(m_key.stamp.size, 1);
    if (!reportProgress(static_cast<double>(m_readSize) / static_cast<double>(whole)))
        return -1;
    do {
        length = ::read(m_descriptor, buffer, size);
    } while (length < 0 && errno == EINTR);
    if (length > 0) {
        m_hash.add(buffer, static_cast<std::size_t>(length));
        m_readSize += static_cast<std::uint64_t>(length);
    }
    return static_cast<long>(length);
}

bool DrawingFile::rewind()
{
    m_hash.reset();
    m_readSize = 0;
    return !m_isCancelled && ::lseek(m_descriptor, 0, SEEK_SET) == 0;
}

bool DrawingFile::reportProgress(double share)
{
    m_isCancelled = m_isCancelled || !zelprogress::step(zelprogress::READING_DRAWING, std::min(share, 1.0));
    return !m_isCancelled;
}

DrawingKey DrawingFile::key() const
{
    DrawingKey key = m_key;
    key.hash = m_hash.value();
    return key;
}

bool DrawingFile::hashToEnd()
{
    const std::unique_ptr<char[]> block(new char[HashBlock]);
    long length = 0;
    do {
        length = read(block.get(), HashBlock);
    } while (length > 0);
    return length == 0;
}

} // namespace mirn::zelsvg
