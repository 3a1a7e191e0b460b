// SPDX-License-Identifier: MIT
#include "host/sampleproject.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace mirn::zelchip {

namespace {

const QString ImplementationName = QStringLiteral("impl1");
const QString ProjectFile = QStringLiteral("project.json");

// The project file comes last: a copy is whole when it has one.
bool copyProject(const QDir& from, const QDir& to)
{
    if (!to.mkpath(ImplementationName))
        return false;
    QStringList names = from.entryList(QDir::Files);
    names.removeAll(ProjectFile);
    names.append(ProjectFile);
    for (const QString& name : names) {
        QFile::remove(to.filePath(name)); // of a copy that was not finished
        if (!QFile::copy(from.filePath(name), to.filePath(name)))
            return false;
    }
    return true;
}

} // namespace

QString sampleProject(const QString& shipped, const QString& userFolder)
{
    if (QFileInfo(QDir(shipped).filePath(ImplementationName)).isWritable())
        return shipped;
    const QDir copy(userFolder + QStringLiteral("/sample"));
    if (copy.exists(ProjectFile) || copyProject(QDir(shipped), copy))
        return copy.path();
    return shipped;
}

} // namespace mirn::zelchip
