// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mirn::zelchip {

// The system calls through which everything goes that must not be lost, so that a test can let each of them fail. Each
// returns what the call of its name does: -1, with errno, where it failed. File names are in the file system's
// encoding.
class FileLayer
{
public:
    virtual ~FileLayer();

    // The one that asks the system. Lives as long as the program.
    [[nodiscard]] static FileLayer& system();

    [[nodiscard]] virtual int open(const char* name, int flags);
    [[nodiscard]] virtual long read(int file, char* bytes, std::size_t size);
    [[nodiscard]] virtual long write(int file, const char* bytes, std::size_t size);
    [[nodiscard]] virtual int sync(int file); // fsync
    [[nodiscard]] virtual int truncate(int file, long size);
    [[nodiscard]] virtual int rename(const char* from, const char* to);
    [[nodiscard]] virtual int link(const char* from, const char* to);
    virtual int unlink(const char* name);
    virtual int close(int file);
};

} // namespace mirn::zelchip
