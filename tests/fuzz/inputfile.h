// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>
#include <QTemporaryDir>

#include <cstdlib>

namespace zelfuzz {

inline void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

// A file of this name in a folder that lasts as long as the program, with this content.
inline QString inputFile(const char* name, const char* data, std::size_t size)
{
    static const QTemporaryDir folder;
    QFile file(folder.filePath(QLatin1String(name)));
    check(file.open(QIODevice::WriteOnly) && file.write(data, static_cast<qint64>(size)) == static_cast<qint64>(size));
    return file.fileName();
}

} // namespace zelfuzz
