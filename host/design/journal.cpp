// SPDX-License-Identifier: MIT
#include "host/design/journal.h"

#include "host/tcl/tclinterpreter.h"

#include <QDir>
#include <QFileInfo>

namespace mirn::zelchip {

Journal::Journal(const QString& fileName)
    : m_fileName(fileName)
    , m_file(fileName)
{
}

Journal::~Journal() = default;

Journal::Content Journal::read() const
{
    Content content;
    QFile file(m_fileName);
    if (!file.exists())
        return content;
    if (!file.open(QIODevice::ReadOnly)) {
        content.error = QStringLiteral("%1 cannot be read: %2").arg(m_fileName, file.errorString());
        return content;
    }
    QString command;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        if (!line.endsWith('\n')) {
            content.hasTornEnd = true;
            return content;
        }
        command += QString::fromUtf8(line);
        if (!TclInterpreter::isComplete(command))
            continue;
        command.chop(1);
        if (!command.trimmed().isEmpty())
            content.commands.append(command);
        command.clear();
    }
    content.hasTornEnd = !command.isEmpty();
    return content;
}

QString Journal::append(const QString& command)
{
    const QString obstacle = open();
    if (!obstacle.isEmpty())
        return obstacle;
    const qint64 end = m_file.size();
    const QByteArray line = command.toUtf8() + '\n';
    if (m_file.write(line) == line.size() && m_file.flush())
        return {};
    const QString problem = complaint(m_file.errorString());
    // Half a line must not stand before the next one.
    m_file.close();
    QFile::resize(m_fileName, end);
    return problem;
}

QString Journal::clear()
{
    m_file.close();
    if (!QFileInfo::exists(m_fileName) || QFile::resize(m_fileName, 0))
        return {};
    return complaint(QFile(m_fileName).errorString());
}

QString Journal::setAside()
{
    m_file.close();
    for (int number = 1; number < 1000; ++number) {
        const QString other = QStringLiteral("%1.refused-%2").arg(m_fileName).arg(number);
        if (!QFileInfo::exists(other))
            return QFile::rename(m_fileName, other) ? other : QString();
    }
    return {};
}

QString Journal::dropTornEnd()
{
    m_file.close();
    QFile file(m_fileName);
    if (!file.open(QIODevice::ReadWrite))
        return complaint(file.errorString());
    qint64 end = 0;
    QString command;
    while (!file.atEnd()) {
        const QByteArray line = file.readLine();
        command += QString::fromUtf8(line);
        if (!line.endsWith('\n') || !TclInterpreter::isComplete(command))
            continue;
        command.clear();
        end = file.pos();
    }
    return file.resize(end) ? QString() : complaint(file.errorString());
}

QString Journal::open()
{
    if (m_file.isOpen())
        return {};
    QDir().mkpath(QFileInfo(m_fileName).absolutePath());
    return m_file.open(QIODevice::WriteOnly | QIODevice::Append) ? QString() : complaint(m_file.errorString());
}

QString Journal::complaint(const QString& what) const
{
    return QStringLiteral("the change cannot be kept in %1: %2").arg(m_fileName, what);
}

} // namespace mirn::zelchip
