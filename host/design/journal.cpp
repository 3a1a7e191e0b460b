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
QByteArray takeLine(const QByteArray& bytes, int& position)
{
    const int end = static_cast<int>(bytes.indexOf('\n', position));
    const int next = end < 0 ? static_cast<int>(bytes.size()) : end + 1;
    return bytes.mid(std::exchange(position, next), next - position);
}

} // namespace

Journal::Journal(const QString& fileName)
    : m_fileName(fileName)
    , m_file(fileName)
{
    startsAfter({});
}

Journal::~Journal() = default;

Journal::Content Journal::read() const
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
    QString command;
    int groupBegin = 0; // of the last group
    int groupSize = 0;
    for (int position = 0; position < content.bytes.size();) {
        const QByteArray line = takeLine(content.bytes, position);
        if (command.isEmpty() && line.startsWith('#')) {
            content.hasTornEnd = !line.endsWith('\n');
            content.isForeign = content.isForeign || (line.startsWith(HeaderStart) && line != m_header);
            if (line.startsWith(GroupStart)) {
                groupBegin = static_cast<int>(content.commands.size());
                groupSize = line.mid(GroupStart.size()).trimmed().toInt();
            }
            continue;
        }
        command += QString::fromUtf8(line.constData(), line.size()); // of a byte array alone, Qt 5 reads up to a zero
        // A name may hold a line break; the command then goes on in the next line.
        if (!line.endsWith('\n') || !TclInterpreter::isComplete(command))
            continue;
        command.chop(1);
        if (!command.trimmed().isEmpty())
            content.commands.append(command);
        command.clear();
    }
    content.hasTornEnd = content.hasTornEnd || !command.isEmpty();
    if (content.commands.size() - groupBegin < groupSize) {
        content.commands = content.commands.mid(0, groupBegin);
        content.hasTornEnd = true;
    }
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
    if (m_file.write(lines) == lines.size() && m_file.flush())
        return {};
    const QString problem = complaint();
    // Half a command must not stand before the next one.
    m_file.close();
    QFile::resize(m_fileName, end);
    return problem;
}

void Journal::startsAfter(const QByteArray& savedState)
{
    m_header = HeaderStart + QCryptographicHash::hash(savedState, QCryptographicHash::Sha256).toHex() + '\n';
}

QString Journal::startAfter(const QByteArray& savedState)
{
    startsAfter(savedState);
    m_file.close();
    if (!QFileInfo::exists(m_fileName) || QFile::resize(m_fileName, 0))
        return {};
    return complaint();
}

QString Journal::setAside()
{
    m_file.close();
    const QString name = freeName();
    return QFile::rename(m_fileName, name) ? name : QString();
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
    if (m_file.isOpen())
        return {};
    QDir().mkpath(QFileInfo(m_fileName).absolutePath());
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append) ? QString() : complaint();
}

QString Journal::complaint() const
{
    return QStringLiteral("the change cannot be kept in %1: %2").arg(m_fileName, m_file.errorString());
}

} // namespace mirn::zelchip
