// SPDX-License-Identifier: MIT
#include "host/design/filereplacement.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace mirn::zelchip {

namespace {

// The number of names to try: other programs, or one that was killed, may have left some behind.
constexpr int MostNames = 100;

// The new file beside the one that it is to replace; removed again unless it was renamed.
class FileBeside final
{
public:
    FileBeside(const QString& fileName, FileLayer& files, Leftovers leftovers)
        : m_files(files)
    {
        if (leftovers == Leftovers::AreRemoved)
            files.unlink(QFile::encodeName(fileName + QStringLiteral(".part-1")).constData());
        for (int number = 1; number <= MostNames; ++number) {
            m_name = QFile::encodeName(QStringLiteral("%1.part-%2").arg(fileName, QString::number(number)));
            m_file = files.open(m_name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
            if (m_file >= 0 || errno != EEXIST)
                return;
        }
    }

    ~FileBeside()
    {
        const int problem = errno; // the caller reports it
        if (m_file >= 0) {
            m_files.close(m_file);
            if (!m_isRenamed)
                m_files.unlink(m_name.constData());
        }
        errno = problem;
    }

    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    [[nodiscard]] bool write(const QByteArray& content, const QByteArray& likeName)
    {
        struct stat status;
        if (m_file >= 0 && ::stat(likeName.constData(), &status) == 0 && S_ISREG(status.st_mode))
            (void)::fchmod(m_file, status.st_mode & 07777); // on failure the new file keeps the usual ones
        return m_file >= 0 && writeAll(m_files, m_file, content) && m_files.sync(m_file) == 0;
    }

    [[nodiscard]] bool rename(const QByteArray& name)
    {
        m_isRenamed = m_files.rename(m_name.constData(), name.constData()) == 0;
        return m_isRenamed;
    }

private:
    FileLayer& m_files;
    QByteArray m_name;
    int m_file = -1;
    bool m_isRenamed = false;
};

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

bool syncFolder(FileLayer& files, const QString& folder)
{
    const int file = files.open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (file < 0)
        return false;
    const bool isDone = files.sync(file) == 0 || errno == EINVAL || errno == ENOTSUP;
    const int problem = errno;
    files.close(file);
    errno = problem;
    return isDone;
}

FileReplacement replaceFile(const QString& fileName, const QByteArray& content, FileLayer& files, Leftovers leftovers)
{
    FileReplacement result;
    const QByteArray name = QFile::encodeName(fileName);
    FileBeside beside(fileName, files, leftovers);
    result.isDone = beside.write(content, name) && beside.rename(name);
    if (!result.isDone || !syncFolder(files, QFileInfo(fileName).absolutePath()))
        result.error = qt_error_string(errno);
    return result;
}

} // namespace mirn::zelchip
