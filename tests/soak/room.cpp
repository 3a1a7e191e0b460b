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

bool SmallDisk::mount(const QString& folder)
{
    m_folder = QFile::encodeName(folder);
    m_isMounted = ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
        && ::mount("none", m_folder.constData(), "tmpfs", 0, "size=2m") == 0;
    return m_isMounted;
}

SmallDisk::~SmallDisk()
{
    if (m_isMounted)
        ::umount2(m_folder.constData(), MNT_DETACH);
}

void SmallDisk::leave(qint64 bytes, qint64)
{
    const QByteArray filler = m_folder + "/filler";
    ::unlink(filler.constData());
    struct statvfs disk;
    if (bytes < 0 || ::statvfs(m_folder.constData(), &disk) != 0)
        return;
    const qint64 taken = static_cast<qint64>(disk.f_bavail * disk.f_frsize) - bytes;
    const int file = ::open(filler.constData(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    if (file < 0 || (taken > 0 && ::posix_fallocate(file, 0, taken) != 0))
        qFatal("cannot fill %s", m_folder.constData());
    ::close(file);
}

void FileSizeLimit::leave(qint64 bytes, qint64 process)
{
    const rlimit limit{bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
    if (::prlimit(static_cast<pid_t>(process), RLIMIT_FSIZE, &limit, nullptr) != 0)
        qFatal("the size of files cannot be limited");
}

} // namespace soak
