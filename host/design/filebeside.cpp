// SPDX-License-Identifier: MIT
#include "host/design/filebeside.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace mirn::zelchip {

namespace {

// The number of names to try: other programs, or one that was killed, may have left some behind.
constexpr int MostNames = 100;

} // namespace

bool writeAll(FileLayer& files, int file, const QByteArray& bytes)
{
    qsizetype done = 0;
    while (done < bytes.size()) {
        const long length = files.write(file, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (length < 0 && errno != EINTR)
            return false;
        if (length == 0) {
            errno = ENOSPC; // a full disk is the only reason to write nothing
            return false;
        }
        done += length > 0 ? length : 0;
    }
    return true;
}

FileBeside::FileBeside(const QString& fileName, FileLayer& files, Leftovers leftovers)
    : m_files(files)
    , m_target(fileName)
{
    if (leftovers == Leftovers::AreRemoved)
        files.unlink(QFile::encodeName(fileName + QStringLiteral(".part-1")).constData());
    for (int number = 1; number <= MostNames; ++number) {
        m_name = QFile::encodeName(QStringLiteral("%1.part-%2").arg(fileName, QString::number(number)));
        m_file = files.open(m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
        if (m_file >= 0 || errno != EEXIST)
            break;
    }
    if (isOpen())
        takePermissions();
}

void FileBeside::takePermissions()
{
    struct stat status;
    if (::stat(QFile::encodeName(m_target).constData(), &status) == 0 && S_ISREG(status.st_mode))
        (void)::fchmod(m_file, status.st_mode & 07777); // on failure the new file keeps the usual ones
}

FileBeside::~FileBeside()
{
    const int problem = errno; // the caller reports it
    if (m_file >= 0) {
        m_files.close(m_file);
        if (!m_isRenamed)
            m_files.unlink(m_name.constData());
    }
    errno = problem;
}

bool FileBeside::write(const QByteArray& bytes)
{
    return isOpen() && writeAll(m_files, m_file, bytes);
}

bool FileBeside::replace()
{
    if (!isOpen())
        return false;
    m_isRenamed
        = m_files.sync(m_file) == 0 && m_files.rename(m_name.constData(), QFile::encodeName(m_target).constData()) == 0;
    return m_isRenamed;
}

} // namespace mirn::zelchip
