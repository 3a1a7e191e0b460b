// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace zelsvg {

// An open file; closed when it goes.
class FileDescriptor
{
public:
    explicit FileDescriptor(int number)
        : m_number(number)
    { }
    ~FileDescriptor();
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

private:
    const int m_number;
};

// The first `size` bytes; false when there are fewer.
[[nodiscard]] bool readAll(const FileDescriptor& file, char* buffer, std::size_t size);

[[nodiscard]] bool writeAll(const FileDescriptor& file, std::string_view bytes);

// The first `size` bytes; null when they cannot be had. On a disk of this machine they are mapped, so a file that they
// are taken from is never to be changed in place. One that lies elsewhere may vanish, and is copied.
[[nodiscard]] std::shared_ptr<const char> bytesOf(const FileDescriptor& file, std::size_t size);

} // namespace zelsvg
