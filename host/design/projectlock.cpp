// SPDX-License-Identifier: MIT
#include "host/design/projectlock.h"

#include "engine/input/inputfile.h"
#include "host/tcl/translation.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QSysInfo>
#include <QThread>

#include <signal.h>

#include <cerrno>

namespace mirn::zelchip {

namespace {

// A lock file is empty for a moment while it is created, and a program that finds the project changed releases the lock
// at once.
constexpr int Attempts = 6;
constexpr unsigned long AttemptMilliseconds = 10;

constexpr int MostCharacters = 64; // longest program or machine name that is shown
constexpr qint64 LargestLock = 4096; // bytes; a lock file has about a hundred

// A lock file may contain anything, so its texts are shortened and control characters replaced.
QString printable(QString text)
{
    text.truncate(MostCharacters);
    for (QChar& character : text) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return text;
}

// Returns the name of the program that a process runs; empty if there is no such process or the system does not tell.
QString runningProgram(qint64 process)
{
    QString target = QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(process));
    const QString removed = QStringLiteral(" (deleted)"); // after an update of the program
    if (target.endsWith(removed))
        target.chop(static_cast<int>(removed.size()));
    return QFileInfo(target).fileName();
}

} // namespace

ProjectLock::ProjectLock(const QString& fileName)
    : m_fileName(fileName)
    , m_lock(fileName)
{
    m_lock.setStaleLockTime(0); // a lock never expires by its age, however long its program runs
}

// Opening a pipe would wait for its other end.
QString ProjectLock::fileError() const
{
    const QFileInfo file(m_fileName);
    if ((!file.exists() && !file.isSymLink()) || file.isFile())
        return {};
    const QString error = zelengine::inputFileError(m_fileName, LargestLock);
    return tr("the lock %1 is in the way: %2; remove it").arg(m_fileName, error);
}

QString ProjectLock::claim()
{
    if (m_lock.isLocked())
        return {};
    const QString error = fileError();
    if (!error.isEmpty())
        return error;
    if (QFileInfo(m_fileName).size() > LargestLock)
        return doubt();
    int problem = 0;
    for (int attempt = 0; attempt < Attempts && (attempt == 0 || !isOfRunningProgram()); ++attempt) {
        if (attempt > 0)
            QThread::msleep(AttemptMilliseconds);
        // A program that was killed while it replaced a lock may have left this file behind.
        if (attempt == Attempts - 1)
            QFile::remove(m_fileName + QLatin1String(".rmlock"));
        errno = 0;
        if (m_lock.tryLock(0))
            return {};
        problem = errno;
        if (m_lock.error() != QLockFile::LockFailedError)
            break;
    }
    const QString question = doubt();
    if (!question.isEmpty())
        return question;
    const Holder other = holder();
    if (isOfRunningProgram())
        return tr("the project is open in another program (%1, process %2)")
            .arg(other.program, QString::number(other.process));
    // A lock that cannot be made for another reason is an error: other programs could change the project at the same
    // time.
    return problem == ENOENT || problem == ENOTDIR
        ? QString()
        : tr("the lock %1 cannot be made: %2").arg(m_fileName, qt_error_string(problem));
}

// Whether the lock belongs to a program that runs on this machine. The system may have given the process number of one
// that has ended to another program; where the folder cannot be written, such a lock stays for ever.
bool ProjectLock::isOfRunningProgram() const
{
    const Holder other = holder();
    const bool isHere = other.machine.isEmpty() || other.machine == QSysInfo::machineHostName();
    if (other.process <= 0 || !isHere || (::kill(static_cast<pid_t>(other.process), 0) != 0 && errno == ESRCH))
        return false;
    const QString program = runningProgram(other.process);
    return program.isEmpty() || printable(program) == QFileInfo(other.program).fileName();
}

bool ProjectLock::isOfAnother() const
{
    return !m_lock.isLocked() && holder().process != QCoreApplication::applicationPid() && isOfRunningProgram();
}

ProjectLock::Holder ProjectLock::holder() const
{
    Holder result;
    if (QFileInfo(m_fileName).size() > LargestLock
        || !m_lock.getLockInfo(&result.process, &result.machine, &result.program))
        return {};
    result.machine = printable(result.machine);
    result.program = printable(result.program);
    return result;
}

bool ProjectLock::isUndisputed() const
{
    return !m_lock.isLocked() || holder().process == QCoreApplication::applicationPid();
}

QString ProjectLock::doubt() const
{
    const QFileInfo file(m_fileName);
    if (m_lock.isLocked() || !fileError().isEmpty())
        return fileError();
    if (!file.exists())
        return {};
    const Holder other = holder();
    const QString time = file.lastModified().toString(Qt::ISODate);
    const QString way = tr("If nobody changes the project there any more, take it over (zelchip --take-over)");
    if (other.process <= 0)
        return tr("the lock %1 of %2 does not say which program has the project; it is %3. %4")
            .arg(m_fileName, time, file.size() == 0 ? tr("empty") : tr("damaged"), way);
    if (!other.machine.isEmpty() && other.machine != QSysInfo::machineHostName())
        return tr("the project is open in a program on another machine (%1, process %2 on %3, since %4), says "
                  "the lock %5. %6")
            .arg(other.program, QString::number(other.process), other.machine, time, m_fileName, way);
    return {};
}

QString ProjectLock::takeOver()
{
    const QString error = fileError();
    if (!error.isEmpty() || doubt().isEmpty() || m_lock.removeStaleLockFile())
        return error;
    return tr("the lock %1 cannot be taken over: a program holds it, or it cannot be removed").arg(m_fileName);
}

} // namespace mirn::zelchip
