// SPDX-License-Identifier: MIT
#include "host/design/journal.h"

#include "host/tcl/tclinterpreter.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <utility>

namespace mirn::zelchip {

namespace {

const QByteArray HeaderStart = "# follows ";

// Before the commands of one change that takes several: they count only together.
const QByteArray GroupStart = "# together ";

// Splits off one line with its end.
QByteArray takeLine(const QByteArray& bytes, qsizetype& position)
{
    const qsizetype end = bytes.indexOf('\n', position);
    const qsizetype start = std::exchange(position, end < 0 ? bytes.size() : end + 1);
    return bytes.mid(start, position - start);
}

// Sorts the lines of a journal into changes.
class Lines final
{
public:
    void take(const QByteArray& line, qint64 end)
    {
        ++m_lines;
        if (line.startsWith(GroupStart)) {
            finish();
            m_group.line = m_lines;
            m_missing = line.mid(GroupStart.size()).trimmed().toInt();
        } else if (!line.startsWith('#') && !line.trimmed().isEmpty()) {
            m_group.line = m_group.line == 0 ? m_lines : m_group.line;
            m_group.commands.append(QString::fromUtf8(line.chopped(1)));
            --m_missing;
        }
        if (m_missing > 0)
            return;
        finish();
        m_wholeSize = end;
    }

    // Whether a change is not complete yet.
    [[nodiscard]] bool isWaiting() const { return m_missing > 0; }
    [[nodiscard]] qint64 wholeSize() const { return m_wholeSize; }
    [[nodiscard]] std::vector<Journal::Change>& changes() { return m_changes; }

private:
    void finish()
    {
        m_group.isWhole = m_missing <= 0;
        if (!m_group.commands.isEmpty() || !m_group.isWhole)
            m_changes.push_back(std::exchange(m_group, {}));
        m_missing = 0;
    }

    std::vector<Journal::Change> m_changes;
    Journal::Change m_group;
    int m_lines = 0;
    int m_missing = 0; // commands of the group
    qint64 m_wholeSize = 0;
};

} // namespace

Journal::Journal(const QString& fileName)
    : m_fileName(fileName)
    , m_file(fileName)
    , m_lock(fileName + QLatin1String(".lock"))
{
    m_lock.setStaleLockTime(0); // however long the other program runs
    startsAfter({});
}

Journal::~Journal() = default;

Journal::Content Journal::read()
{
    Content content;
    QFile file(m_fileName);
    if (!file.exists())
        return content;
    // A device or a pipe might never end.
    const bool isRegular = QFileInfo(file).isFile();
    if (!isRegular || !file.open(QIODevice::ReadOnly)) {
        content.error = QStringLiteral("%1 cannot be read: %2")
                            .arg(m_fileName, isRegular ? file.errorString() : QStringLiteral("it is no regular file"));
        return content;
    }
    content.bytes = file.readAll();
    m_size = content.bytes.size();
    Lines lines;
    for (qsizetype position = 0; position < content.bytes.size();) {
        const QByteArray line = takeLine(content.bytes, position);
        const bool isLast = position == content.bytes.size();
        // In the middle an unfinished command is for the interpreter to refuse.
        if (!line.endsWith('\n') || (isLast && !TclInterpreter::isComplete(QString::fromUtf8(line)))) {
            content.hasTornEnd = true;
            break;
        }
        content.isForeign = content.isForeign || (line.startsWith(HeaderStart) && line != m_header);
        lines.take(line, position);
    }
    content.wholeSize = lines.wholeSize();
    content.hasTornEnd = content.hasTornEnd || lines.isWaiting();
    content.changes = std::move(lines.changes());
    return content;
}

QString Journal::append(const QStringList& commands)
{
    const QString obstacle = open();
    if (!obstacle.isEmpty())
        return obstacle;
    const qint64 end = m_file.size();
    QByteArray lines = end == 0 ? m_header : QByteArray();
    if (commands.size() > 1)
        lines += GroupStart + QByteArray::number(commands.size()) + '\n';
    for (const QString& command : commands)
        lines += command.toUtf8() + '\n';
    if (m_file.write(lines) == lines.size() && m_file.flush()) {
        m_size = end + lines.size();
        return {};
    }
    const QString problem = complaint();
    // Half a command must not stand before the next one.
    (void)cut(end);
    return problem;
}

void Journal::startsAfter(const QByteArray& savedState)
{
    m_header = HeaderStart + QCryptographicHash::hash(savedState, QCryptographicHash::Sha256).toHex() + '\n';
}

QString Journal::startAfter(const QByteArray& savedState)
{
    const QString obstacle = claim();
    if (!obstacle.isEmpty())
        return obstacle;
    startsAfter(savedState);
    m_file.close();
    m_blockage.clear();
    m_size = 0;
    return QFileInfo::exists(m_fileName) ? cut(0) : QString();
}

QString Journal::claim()
{
    if (m_lock.isLocked())
        return {};
    QDir().mkpath(QFileInfo(m_fileName).absolutePath());
    if (!m_lock.tryLock(0) && m_lock.error() == QLockFile::LockFailedError) {
        qint64 process = 0;
        QString host;
        QString program;
        (void)m_lock.getLockInfo(&process, &host, &program);
        return QStringLiteral("the project is being changed by another program (%1, process %2)")
            .arg(program, QString::number(process));
    }
    // Where a lock cannot be made, nothing else can be written either, and says so.
    const QFileInfo file(m_fileName);
    if (file.size() == m_size || (file.exists() && !file.isFile()))
        return {};
    m_lock.unlock();
    return QStringLiteral("another program has changed the project; open it again");
}

QString Journal::cut(qint64 size)
{
    m_file.close();
    m_blockage = claim();
    if (m_blockage.isEmpty() && !m_file.resize(size))
        m_blockage = complaint(); // nothing must stand behind what was to go
    if (m_blockage.isEmpty())
        m_size = size;
    return m_blockage;
}

QString Journal::setAside()
{
    m_file.close();
    m_blockage = claim();
    if (!m_blockage.isEmpty())
        return {};
    const QString name = freeName();
    QFile file(m_fileName);
    if (!file.rename(name)) {
        m_blockage = QStringLiteral("%1 cannot be set aside: %2").arg(m_fileName, file.errorString());
        return {};
    }
    m_size = 0;
    return name;
}

QString Journal::copyAside() const
{
    const QString name = freeName();
    return QFile::copy(m_fileName, name) ? name : QString();
}

QString Journal::freeName() const
{
    for (int number = 1;; ++number) {
        const QString name = QStringLiteral("%1.aside-%2").arg(m_fileName, QString::number(number));
        if (!QFileInfo::exists(name))
            return name;
    }
}

QString Journal::open()
{
    // What was appended to a file that is not there any more is lost, and what follows means nothing without it.
    if (m_file.isOpen() && !QFileInfo::exists(m_fileName))
        m_blockage = QStringLiteral("%1 has been removed; save to begin a new one").arg(m_fileName);
    if (!m_blockage.isEmpty() || m_file.isOpen())
        return m_blockage;
    const QString obstacle = claim();
    if (!obstacle.isEmpty())
        return obstacle;
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append) ? QString() : complaint();
}

QString Journal::complaint() const
{
    return QStringLiteral("the change cannot be kept in %1: %2").arg(m_fileName, m_file.errorString());
}

} // namespace mirn::zelchip
