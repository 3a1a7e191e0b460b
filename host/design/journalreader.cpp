// SPDX-License-Identifier: MIT
#include "host/design/journalreader.h"

#include "engine/inputfile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QList>

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

const QByteArray BaseStart = "# follows ";
const QByteArray HoldingStart = "# holds ";
const QByteArray GroupStart = "# together ";

// A damaged number must not make the program wait for more than there can be.
constexpr qint64 MostCommandsTogether = 1'000'000;

bool startsWith(std::string_view line, const QByteArray& start)
{
    return line.substr(0, static_cast<std::size_t>(start.size()))
        == std::string_view(start.constData(), static_cast<std::size_t>(start.size()));
}

// A comment, or nothing but blanks.
bool isEmpty(std::string_view line)
{
    return line.empty() || line.front() == '#' || line.find_first_not_of(" \t\r\v\f") == std::string_view::npos;
}

QByteArray rest(std::string_view line, const QByteArray& start)
{
    return QByteArray(line.data(), static_cast<int>(line.size())).mid(start.size()).trimmed();
}

// Empty where the file has none or cannot be read.
QByteArray firstLine(const QString& fileName)
{
    LineReader reader;
    LineReader::Line line;
    QString error;
    if (!reader.open(fileName, &error) || !reader.next(line) || !line.hasEnd)
        return {};
    return QByteArray(line.text.data(), static_cast<int>(line.text.size())) + '\n';
}

} // namespace

namespace journalformat {

QByteArray baseLine(const QByteArray& placementHash)
{
    return BaseStart + placementHash + '\n';
}

QByteArray holdingLine(const Holding& holding)
{
    return HoldingStart + QByteArray::number(holding.size) + ' ' + holding.hash + '\n';
}

QByteArray groupLine(qsizetype count)
{
    return GroupStart + QByteArray::number(count) + '\n';
}

} // namespace journalformat

bool JournalReader::open(const QString& fileName, QString* error)
{
    return m_reader.open(fileName, error);
}

bool JournalReader::next(Change& change)
{
    change.lines.clear();
    change.isWhole = true;
    change.isTooLong = false;
    LineReader::Line line;
    for (qint64 begin = size(); m_reader.next(line); begin = size()) {
        ++m_lines;
        if (!line.hasEnd) {
            m_hasTornEnd = true;
            return false; // with all that counts together with it
        }
        if (startsWith(line.text, GroupStart)) {
            const Group begun{
                std::min(rest(line.text, GroupStart).toLongLong(), MostCommandsTogether + 1), m_lines, begin};
            const Group group = std::exchange(m_group, begun);
            if (group.commands <= 0)
                continue;
            change.isWhole = false;
            change.line = group.line;
            return true;
        }
        if (isEmpty(line.text))
            continue;
        change.lines.emplace_back(line.text);
        change.isTooLong = change.isTooLong || line.isTooLong;
        if (static_cast<qint64>(change.lines.size()) < std::min(m_group.commands, MostCommandsTogether))
            continue;
        const Group group = std::exchange(m_group, {});
        change.isWhole = group.commands <= MostCommandsTogether;
        change.line = group.commands > 0 ? group.line : m_lines;
        change.begin = group.commands > 0 ? group.begin : begin;
        change.end = size();
        return true;
    }
    m_hasTornEnd = m_hasTornEnd || m_group.commands > 0;
    return false;
}

QByteArray JournalReader::baseOf(const QString& fileName)
{
    const QByteArray line = firstLine(fileName);
    return line.startsWith(BaseStart) ? line : QByteArray();
}

journalformat::Holding JournalReader::holdingOf(const QString& fileName)
{
    const QByteArray line = firstLine(fileName);
    const QList<QByteArray> words = line.mid(HoldingStart.size()).trimmed().split(' ');
    if (!line.startsWith(HoldingStart) || words.size() != 2)
        return {};
    return {std::max(words.at(0).toLongLong(), qint64(0)), words.at(1)};
}

QByteArray hashOfFile(const QString& fileName, qint64 bytes)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    QString error;
    QFile file;
    const int descriptor = zelengine::openInputFile(fileName, LargestJournal, &error);
    if (descriptor >= 0)
        (void)file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle);
    QByteArray block(1 << 18, Qt::Uninitialized);
    while (file.isOpen() && bytes > 0) {
        const qint64 length = file.read(block.data(), std::min<qint64>(block.size(), bytes));
        if (length <= 0)
            break;
        hash.addData(block.left(static_cast<int>(length)));
        bytes -= length;
    }
    return hash.result().toHex();
}

} // namespace mirn::zelchip
