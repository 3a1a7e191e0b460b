// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace mirn::zelchip {

// The system calls for all files that must not be lost, so that tests can make each of them fail. Each operation
// returns what the call of its name returns, in particular -1 with errno for a failure. File names are in the file
// system's encoding.
class FileLayer
{
public:
    virtual ~FileLayer();

    // Returns the layer that really calls the system; it lives as long as the program.
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
