// SPDX-License-Identifier: MIT
#include "host/project/sampleproject.h"

#include "host/design/filereplacement.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace mirn::zelchip {

namespace {

const QString ImplementationName = QStringLiteral("impl1");
const QString ProjectFile = QStringLiteral("project.json");

// The project file comes last, so that a copy is complete if it has one.
bool copyProject(const QDir& from, const QDir& to)
{
    if (!to.mkpath(ImplementationName))
        return false;
    QStringList names = from.entryList(QDir::Files);
    names.removeAll(ProjectFile);
    names.append(ProjectFile);
    return std::all_of(names.cbegin(), names.cend(), [&](const QString& name) {
        QFile file(from.filePath(name));
        return file.open(QIODevice::ReadOnly) && replaceFile(to.filePath(name), file.readAll()).error.isEmpty();
    });
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
