// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>

#include <functional>

#include <fcntl.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace soak {

// Makes room scarce for a program.
struct Room
{
    // Leaves so many bytes, and enough of them for a number below 0. Empty where room cannot be made scarce.
    std::function<void(qint64 bytes, qint64 process)> leave;
    QByteArray complaint; // in the system's words
};

// A small file system in this folder, which nobody else sees and which ends with this process. Only root can make it.
inline Room smallDisk(const QString& folder)
{
    const QByteArray name = QFile::encodeName(folder);
    const bool isMounted = ::unshare(CLONE_NEWNS) == 0
        && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", name.constData(), "tmpfs", 0, "size=2m") == 0;
    const auto fill = [name](qint64 bytesToLeave, qint64) {
        const QByteArray filler = name + "/filler";
        ::unlink(filler.constData());
        struct statvfs disk;
        if (bytesToLeave < 0 || ::statvfs(name.constData(), &disk) != 0)
            return;
        const qint64 taken = static_cast<qint64>(disk.f_bavail * disk.f_frsize) - bytesToLeave;
        const int file = ::open(filler.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
        if (file < 0 || (taken > 0 && ::posix_fallocate(file, 0, taken) != 0))
            qFatal("cannot fill %s", name.constData());
        ::close(file);
    };
    return isMounted ? Room{fill, "No space left on device"} : Room();
}

// A limit for the size that the program's files may have.
inline Room fileSizeLimit()
{
    const auto limitFiles = [](qint64 bytes, qint64 process) {
        const rlimit limit{bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
        if (::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr) != 0)
            qFatal("the size of files cannot be limited");
    };
    return {limitFiles, "File too large"};
}

} // namespace soak
