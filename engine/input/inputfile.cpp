// SPDX-License-Identifier: MIT
#include "engine/input/inputfile.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace mirn::zelengine {

namespace {

constexpr qint64 BlockSize = qint64(1) << 18; // bytes

QString nameOfType(mode_t mode)
{
    if (S_ISDIR(mode))
        return QStringLiteral("a folder");
    if (S_ISFIFO(mode))
        return QStringLiteral("a pipe");
    if (S_ISSOCK(mode))
        return QStringLiteral("a socket");
    return QStringLiteral("a device");
}

QString objectionTo(const struct stat& status, qint64 mostBytes)
{
    if (!S_ISREG(status.st_mode))
        return QStringLiteral("it is %1, expected a regular file").arg(nameOfType(status.st_mode));
    if (status.st_size > mostBytes)
        return QStringLiteral("it has %1 bytes, expected at most %2")
            .arg(QString::number(status.st_size), QString::number(mostBytes));
    return {};
}

} // namespace

int openInputFile(const QString& fileName, qint64 mostBytes, QString* error)
{
    // O_NONBLOCK, because opening a pipe would wait for a writer.
    const int file = ::open(QFile::encodeName(fileName).constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status;
    // A folder or socket that cannot be opened is reported as such, which says more than the system's error.
    const bool isThere = file >= 0
        ? ::fstat(file, &status) == 0
        : errno != ENOENT && ::stat(QFile::encodeName(fileName).constData(), &status) == 0 && !S_ISREG(status.st_mode);
    *error = isThere ? objectionTo(status, mostBytes) : qt_error_string(errno);
    if (error->isEmpty())
        return file;
    if (file >= 0)
        ::close(file);
    return -1;
}

std::optional<QByteArray> readInputFile(const QString& fileName, qint64 mostBytes, QString* error)
{
    const int descriptor = openInputFile(fileName, mostBytes, error);
    if (descriptor < 0)
        return std::nullopt;
    QFile file;
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        *error = file.errorString();
        return std::nullopt;
    }
    // Some files report no size, and read() would allocate all that it may read, so this reads in blocks.
    QByteArray bytes;
    bytes.reserve(static_cast<int>(std::min(file.size(), mostBytes)));
    for (QByteArray block = file.read(BlockSize); !block.isEmpty() && bytes.size() < mostBytes;
         block = file.read(BlockSize))
        bytes += block;
    if (file.error() == QFileDevice::NoError)
        return bytes;
    *error = file.errorString();
    return std::nullopt;
}

QString inputFileError(const QString& fileName, qint64 mostBytes)
{
    QString error;
    const int file = openInputFile(fileName, mostBytes, &error);
    if (file >= 0)
        ::close(file);
    return error;
}

} // namespace mirn::zelengine
