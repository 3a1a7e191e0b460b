// SPDX-License-Identifier: MIT
#include "host/design/filereplacement.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

#include <cerrno>

namespace mirn::zelchip {

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
    FileBeside beside(fileName, files, leftovers);
    result.isDone = beside.write(content) && beside.replace();
    if (!result.isDone || !syncFolder(files, QFileInfo(fileName).absolutePath()))
        result.error = qt_error_string(errno);
    return result;
}

} // namespace mirn::zelchip
