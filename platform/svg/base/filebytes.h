// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

namespace mirn::zelsvg {

// Owns the descriptor of an open file and closes it on destruction. It does not open files itself.
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

// Reads the first `size` bytes; returns false if there are fewer.
[[nodiscard]] bool readAll(const FileDescriptor& file, char* buffer, std::size_t size);

[[nodiscard]] bool writeAll(const FileDescriptor& file, std::string_view bytes);

// Returns the first `size` bytes, or null on failure. On a local file system they are mapped, so such a file must never
// be changed in place. Elsewhere the file may vanish while it is open, so its bytes are copied.
[[nodiscard]] std::shared_ptr<const char> bytesOf(const FileDescriptor& file, std::size_t size);

} // namespace mirn::zelsvg
