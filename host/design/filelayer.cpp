// SPDX-License-Identifier: MIT
#include "host/design/filelayer.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace mirn::zelchip {

namespace {

constexpr int Everybody = 0666; // minus the user's umask

} // namespace

FileLayer::~FileLayer() = default;

FileLayer& FileLayer::system()
{
    static FileLayer layer;
    return layer;
}

int FileLayer::open(const char* name, int flags)
{
    return ::open(name, flags | O_CLOEXEC, Everybody);
}

long FileLayer::read(int file, char* bytes, std::size_t size)
{
    return static_cast<long>(::read(file, bytes, size));
}

long FileLayer::write(int file, const char* bytes, std::size_t size)
{
    return static_cast<long>(::write(file, bytes, size));
}

int FileLayer::sync(int file)
{
    return ::fsync(file);
}

int FileLayer::truncate(int file, long size)
{
    return ::ftruncate(file, size);
}

int FileLayer::rename(const char* from, const char* to)
{
    return std::rename(from, to);
}

int FileLayer::link(const char* from, const char* to)
{
    return ::link(from, to);
}

int FileLayer::unlink(const char* name)
{
    return ::unlink(name);
}

int FileLayer::close(int file)
{
    return ::close(file);
}

} // namespace mirn::zelchip
