// SPDX-License-Identifier: MIT
#include "tests/soak/room.h"

#include <QFile>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace soak {

namespace {

void fill(const QByteArray& folder, qint64 bytesToLeave)
{
    const QByteArray filler = folder + "/filler";
    ::unlink(filler.constData());
    struct statvfs disk;
    if (bytesToLeave < 0 || ::statvfs(folder.constData(), &disk) != 0)
        return;
    const qint64 taken = static_cast<qint64>(disk.f_bavail * disk.f_frsize) - bytesToLeave;
    const int file = ::open(filler.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || (taken > 0 && ::posix_fallocate(file, 0, taken) != 0))
        qFatal("cannot fill %s", folder.constData());
    ::close(file);
}

} // namespace

Room smallDisk(const QString& folder)
{
    const QByteArray name = QFile::encodeName(folder);
    const bool isMounted = ::unshare(CLONE_NEWNS) == 0
        && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", name.constData(), "tmpfs", 0, "size=2m") == 0;
    if (!isMounted)
        return {};
    return {[name](qint64 bytes, qint64) { fill(name, bytes); }, "No space left on device"};
}

Room fileSizeLimit()
{
    const auto limitFiles = [](qint64 bytes, qint64 process) {
        const rlimit limit{bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
        if (::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr) != 0)
            qFatal("the size of files cannot be limited");
    };
    return {limitFiles, "File too large"};
}

} // namespace soak
