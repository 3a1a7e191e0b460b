// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>

namespace zeltest {

// Empty where the file cannot be read.
inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// Writes a file anew and returns its path; ends the program where that cannot be done.
inline QString writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush())
        qFatal("cannot write %s", qPrintable(path));
    return path;
}

} // namespace zeltest
