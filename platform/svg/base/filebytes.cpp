// SPDX-License-Identifier: MIT
#include "platform/svg/base/filebytes.h"

#include <sys/mman.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/vfs.h>
#endif

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace mirn::zelsvg {

namespace {

// Whether the file system is one on which an open file remains readable until it is closed.
[[nodiscard]] bool isLocal(const FileDescriptor& file)
{
#ifdef __linux__
    constexpr unsigned long LocalTypes[] = {
        0xEF53, // ext
        0x58465342, // XFS
        0x9123683E, // Btrfs
        0xF2F52010, // F2FS
        0x2FC12FC1, // ZFS
        0x01021994, // tmpfs
        0x794C7630, // overlay
    };
    struct statfs status;
    return ::fstatfs(file.number(), &status) == 0
        && std::find(std::begin(LocalTypes), std::end(LocalTypes), static_cast<unsigned long>(status.f_type))
        != std::end(LocalTypes);
#else
    return false;
#endif
}

[[nodiscard]] std::shared_ptr<const char> mapped(const FileDescriptor& file, std::size_t size)
{
#ifdef __linux__
    constexpr int Flags = MAP_PRIVATE | MAP_POPULATE;
#else
    constexpr int Flags = MAP_PRIVATE;
#endif
    void* begin = ::mmap(nullptr, size, PROT_READ, Flags, file.number(), 0);
    if (begin == MAP_FAILED)
        return nullptr;
    return {static_cast<const char*>(begin), [begin, size](const char*) { ::munmap(begin, size); }};
}

[[nodiscard]] std::shared_ptr<const char> copied(const FileDescriptor& file, std::size_t size)
{
    const std::shared_ptr<char> bytes(new char[size], std::default_delete<char[]>());
    return readAll(file, bytes.get(), size) ? bytes : nullptr;
}

} // namespace

FileDescriptor::~FileDescriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

bool readAll(const FileDescriptor& file, char* buffer, std::size_t size)
{
    off_t position = 0;
    while (size > 0) {
        const ssize_t length = ::pread(file.number(), buffer, size, position);
        if (length == 0 || (length < 0 && errno != EINTR))
            return false;
        const ssize_t done = std::max<ssize_t>(length, 0);
        buffer += done;
        position += done;
        size -= static_cast<std::size_t>(done);
    }
    return true;
}

bool writeAll(const FileDescriptor& file, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t length = ::write(file.number(), bytes.data(), bytes.size());
        if (length < 0 && errno != EINTR)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(length, 0)));
    }
    return true;
}

std::shared_ptr<const char> bytesOf(const FileDescriptor& file, std::size_t size)
{
    return isLocal(file) ? mapped(file, size) : copied(file, size);
}

} // namespace mirn::zelsvg
