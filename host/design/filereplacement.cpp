// SPDX-License-Identifier: MIT
#include "host/design/filereplacement.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>

#include <cerrno>

namespace mirn::zelchip {

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
