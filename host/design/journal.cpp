// SPDX-License-Identifier: MIT
#include "host/design/journal.h"

#include "engine/input/inputfile.h"
#include "host/design/filereplacement.h"
#include "host/design/journalreader.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <optional>
#include <utility>

namespace mirn::zelchip {

namespace {

const QString ChangedByAnother = QStringLiteral("another program has changed the project; open it again");

QString freeName(const QString& fileName)
{
    for (int number = 1;; ++number) {
        const QString name = QStringLiteral("%1.aside-%2").arg(fileName, QString::number(number));
        if (!entryExists(name))
            return name;
    }
}

} // namespace

QString keepBackup(const QString& fileName, FileLayer& files)
{
    const QString name = freeName(fileName);
    // A hard link costs no space. Some file systems have none, and a link to a symbolic link would not copy its
    // content.
    if (!QFileInfo(fileName).isSymLink()
        && files.link(QFile::encodeName(fileName).constData(), QFile::encodeName(name).constData()) == 0)
        return name;
    return zelengine::inputFileError(fileName, LargestJournal).isEmpty() && QFile::copy(fileName, name) ? name
                                                                                                        : QString();
}

Journal::Journal(const QString& fileName, FileLayer& files)
    : m_fileName(fileName)
    , m_files(files)
    , m_lock(fileName + QLatin1String(".lock"))
{ }

Journal::~Journal()
{
    close();
}

void Journal::close()
{
    if (m_file >= 0)
        m_files.close(std::exchange(m_file, -1));
}

// The hash lets claim() find out whether another program changes the file from here on.
void Journal::release()
{
    if (m_file >= 0)
        m_hash = isOurs() ? hashOfFile(m_fileName) : QByteArray();
    close();
    m_lock.release();
}

bool Journal::isAsKnown() const
{
    if (isDisabled())
        return true;
    if (m_file >= 0)
        return isOurs();
    return QFileInfo(m_fileName).size() == m_size
        && (m_size == 0 || m_hash.isEmpty() || hashOfFile(m_fileName) == m_hash);
}

void Journal::expect(qint64 size, const QByteArray& hash)
{
    m_size = size;
    m_hash = hash;
}

QString Journal::secure()
{
    const bool isAsLeft = m_file >= 0 ? isOurs() : QFileInfo(m_fileName).size() == m_size;
    if ((isAsLeft && !m_hasUnsavedContent) || !entryExists(m_fileName))
        return {};
    (void)setAside();
    return m_appendError;
}

journalformat::Checkpoint Journal::content() const
{
    return entryExists(m_fileName) && m_size > 0 ? journalformat::Checkpoint{m_size, hashOfFile(m_fileName, m_size)}
                                                 : journalformat::Checkpoint();
}

void Journal::markSaved()
{
    if (m_file >= 0)
        m_hash = isOurs() ? hashOfFile(m_fileName) : QByteArray();
    close();
    m_appendError.clear();
    m_isSaved = true;
}

void Journal::refuse(const QString& reason)
{
    m_refusal = reason;
}

QString Journal::claim()
{
    if (m_lock.isHeld() || !m_refusal.isEmpty())
        return m_refusal;
    const QString folder = QFileInfo(m_fileName).absolutePath();
    if (!QFileInfo::exists(folder) && QDir().mkpath(folder))
        (void)syncFolder(m_files, QFileInfo(folder).absolutePath());
    QString error = m_lock.claim();
    if (!error.isEmpty())
        return error;
    error = fileError();
    if (error.isEmpty() && (QFileInfo(m_fileName).size() != m_size || (m_size > 0 && hashOfFile(m_fileName) != m_hash)))
        error = ChangedByAnother;
    if (!error.isEmpty())
        m_lock.release();
    return error;
}

// The file may have been replaced by a pipe or a device, or have become unreadable.
QString Journal::fileError() const
{
    const QString reason
        = QFileInfo::exists(m_fileName) ? zelengine::inputFileError(m_fileName, LargestJournal) : QString();
    return reason.isEmpty() ? QString() : described(reason);
}

QString Journal::append(const QStringList& commands)
{
    const QString error = open();
    if (!error.isEmpty())
        return error;
    QByteArray lines = m_size == 0 ? m_base : QByteArray();
    if (commands.size() > 1)
        lines += journalformat::groupLine(commands.size());
    for (const QString& command : commands) {
        const QByteArray line = command.toUtf8();
        if (static_cast<std::size_t>(line.size()) > LineReader::LongestLine)
            return described(QStringLiteral("a command is longer than a journal takes"));
        lines += line + '\n';
    }
    if (m_size + lines.size() > LargestJournal)
        return described(QStringLiteral("it is full; save to begin a new one"));
    if (writeAll(m_files, m_file, lines)) {
        m_size += lines.size();
        return {};
    }
    const QString problem = described(qt_error_string(errno));
    // Half a command must not precede the next one.
    (void)cut(m_size);
    return problem;
}

QString Journal::restart(const QByteArray& base)
{
    const QString error = claim();
    if (!error.isEmpty())
        return error;
    const QString foreign = secure();
    if (!foreign.isEmpty())
        return foreign;
    setBase(base);
    close();
    m_appendError.clear();
    m_isSaved = false;
    m_hasUnsavedContent = false;
    if (!entryExists(m_fileName))
        m_size = 0;
    return m_size == 0 ? QString() : cut(0);
}

// A failure blocks the journal; nothing was written by then.
QString Journal::cut(qint64 size)
{
    m_appendError = m_file < 0 ? prepare() : QString();
    if (m_appendError.isEmpty() && m_files.truncate(m_file, static_cast<long>(size)) != 0)
        m_appendError = described(qt_error_string(errno)); // nothing may follow the bytes that could not be cut off
    if (m_appendError.isEmpty())
        m_size = size;
    return m_appendError;
}

QString Journal::setAside()
{
    close();
    m_hasUnsavedContent = true;
    m_appendError = claim();
    if (!m_appendError.isEmpty())
        return {};
    const QString name = freeName(m_fileName);
    if (m_files.rename(QFile::encodeName(m_fileName).constData(), QFile::encodeName(name).constData()) != 0) {
        m_appendError = QStringLiteral("%1 cannot be set aside: %2").arg(m_fileName, qt_error_string(errno));
        return {};
    }
    m_size = 0;
    m_hasUnsavedContent = false;
    return name;
}

QString Journal::replaceKeepingBackup(const QByteArray& content)
{
    if (content.isEmpty())
        return setAside();
    close();
    m_hasUnsavedContent = true;
    m_appendError = claim();
    if (!m_appendError.isEmpty())
        return {};
    const QString name = keepBackup(m_fileName, m_files);
    FileReplacement replacement{false, qt_error_string(errno)};
    if (!name.isEmpty())
        replacement = replaceFile(m_fileName, content, m_files, Leftovers::AreRemoved);
    if (replacement.isDone) {
        m_size = content.size();
        m_hash = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        m_hasUnsavedContent = false;
        return name;
    }
    if (!name.isEmpty())
        m_files.unlink(QFile::encodeName(name).constData()); // it may be a second name of the journal itself
    m_appendError = QStringLiteral("%1 cannot be set aside: %2").arg(m_fileName, replacement.error);
    return {};
}

void Journal::block(const QString& reason)
{
    m_hasUnsavedContent = true;
    m_appendError = reason;
}

// Whether the open file is still the one under this name, and as this program left it. Anything appended to a file that
// was removed or replaced would be lost.
bool Journal::isOurs() const
{
    struct stat named;
    struct stat opened;
    return ::lstat(QFile::encodeName(m_fileName).constData(), &named) == 0 && ::fstat(m_file, &opened) == 0
        && named.st_dev == opened.st_dev && named.st_ino == opened.st_ino && opened.st_size == m_size;
}

QString Journal::open()
{
    if (m_file >= 0 && !isOurs())
        m_appendError
            = QStringLiteral("%1 has been %2; save to begin a new one")
                  .arg(m_fileName, entryExists(m_fileName) ? QStringLiteral("changed") : QStringLiteral("removed"));
    if (!m_appendError.isEmpty() || m_file >= 0)
        return m_appendError;
    const QString error = claim();
    if (!error.isEmpty())
        return error;
    const QString problem = prepare();
    if (!problem.isEmpty() || !m_isSaved)
        return problem;
    m_isSaved = false;
    return cut(0);
}

// Opens the file for writing. The target of a symbolic link belongs to somebody else, so a copy replaces the link.
QString Journal::prepare()
{
    const QString error = fileError();
    if (!error.isEmpty())
        return error;
    if (QFileInfo(m_fileName).isSymLink()) {
        QString problem;
        const std::optional<QByteArray> content = QFileInfo::exists(m_fileName)
            ? zelengine::readInputFile(m_fileName, LargestJournal, &problem)
            : QByteArray();
        if (!content || content->size() != m_size)
            return content ? ChangedByAnother : described(problem);
        const FileReplacement replacement = replaceFile(m_fileName, *content, m_files, Leftovers::AreRemoved);
        if (!replacement.isDone)
            return described(replacement.error);
    }
    m_file = m_files.open(
        QFile::encodeName(m_fileName).constData(), O_WRONLY | O_APPEND | O_CREAT | O_NOFOLLOW | O_NONBLOCK);
    return m_file >= 0 ? QString() : described(qt_error_string(errno));
}

QString Journal::described(const QString& reason) const
{
    return QStringLiteral("the change cannot be kept in %1: %2").arg(m_fileName, reason);
}

} // namespace mirn::zelchip
