// SPDX-License-Identifier: MIT
#include "importer/projectfolder.h"

#include "importer/projectfiles.h"
#include "importer/translation.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

namespace mirn::zelimporter {

namespace {

const QString LockPattern = QStringLiteral("*.lock");

QString cleanTarget(const QString& target)
{
    return QDir::cleanPath(QFileInfo(target).absoluteFilePath());
}

// Whether a program has the project open.
bool isInUse(const QString& project)
{
    QDirIterator locks(project, {LockPattern}, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (locks.hasNext()) {
        QLockFile lock(locks.next());
        lock.setStaleLockTime(0);
        if (!lock.tryLock(0))
            return true;
    }
    return false;
}

// Forces the names in a folder to the disk.
QString syncFolder(const QString& folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    const bool isSynced = descriptor >= 0 && ::fsync(descriptor) == 0;
    const QString error = isSynced ? QString() : QStringLiteral("%1: %2").arg(folder, qt_error_string(errno));
    if (descriptor >= 0)
        ::close(descriptor);
    return error;
}

QString rename(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0
        ? QString()
        : QStringLiteral("%1: %2").arg(to, qt_error_string(errno));
}

QString freeNameBeside(const QString& target)
{
    for (int i = 1;; ++i) {
        const QString name = QStringLiteral("%1.before-%2").arg(target, QString::number(i));
        if (!QFileInfo::exists(name))
            return name;
    }
}

} // namespace

ProjectFolder::ProjectFolder(const QString& target)
    : m_target(cleanTarget(target))
{ }

ProjectFolder::~ProjectFolder()
{
    if (!m_temporary.isEmpty())
        QDir(m_temporary).removeRecursively();
}

QString ProjectFolder::checkTarget(bool replaces) const
{
    const QFileInfo target(m_target);
    if (!target.exists() && !target.isSymLink())
        return {};
    if (!target.isDir())
        return tr("%1: there is a file; expected the name of a new project folder").arg(m_target);
    if (QDir(m_target).isEmpty())
        return {};
    if (!QFileInfo::exists(m_target + QLatin1Char('/') + projectfiles::Project))
        return tr("%1: the folder is no project; expected a new folder, an empty one or a project to replace")
            .arg(m_target);
    if (!replaces)
        return tr("%1: there is a project already; expected a new folder, or the wish to replace it "
                  "(\"replace\", which keeps it beside the new one)")
            .arg(m_target);
    return isInUse(m_target) ? tr("%1: a program has the project open; expected one that is closed").arg(m_target)
                             : QString();
}

QString ProjectFolder::begin(bool replaces)
{
    QString error = checkTarget(replaces);
    if (!error.isEmpty())
        return error;
    const QFileInfo target(m_target);
    if (!target.dir().exists())
        return tr("%1: there is no such folder; expected one to make the project in").arg(target.path());
    QTemporaryDir folder(m_target + QStringLiteral(".importing-XXXXXX"));
    if (!folder.isValid())
        return QStringLiteral("%1: %2").arg(target.path(), folder.errorString());
    folder.setAutoRemove(false);
    m_temporary = folder.path();
    // QTemporaryDir's folder is for nobody else; a project is as others are.
    QFile::setPermissions(m_temporary,
        QFile::permissions(target.path())
            & (QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup
                | QFile::ReadOther | QFile::ExeOther));
    return {};
}

// If the program ends between the two names, the former project is whole under its new one.
QString ProjectFolder::finish()
{
    QString error = syncFolder(m_temporary);
    if (!error.isEmpty())
        return error;
    const bool isThere = QFileInfo::exists(m_target) && !QDir(m_target).isEmpty();
    const QString former = isThere ? freeNameBeside(m_target) : QString();
    if (isThere)
        error = rename(m_target, former);
    if (!error.isEmpty())
        return error;
    error = rename(m_temporary, m_target);
    if (error.isEmpty()) {
        m_former = former;
        m_temporary.clear();
        return syncFolder(QFileInfo(m_target).path());
    }
    if (isThere)
        (void)rename(former, m_target);
    return error;
}

} // namespace mirn::zelimporter
